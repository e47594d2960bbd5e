// Published digests and their inputs.
#pragma once

#include <string_view>

namespace app::testing {

struct KnownDigests {
  std::string_view input;
  std::u16string_view md5;
  std::u16string_view sha1;
  std::u16string_view sha256;
  std::u16string_view sha512;
  std::u16string_view blake3;
};

inline constexpr KnownDigests DigestsOfAbc = {
    .input = "abc",
    .md5 = u"900150983cd24fb0d6963f7d28e17f72",
    .sha1 = u"a9993e364706816aba3e25717850c26c9cd0d89d",
    .sha256 = u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
    .sha512 =
        u"ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
        u"2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f",
    .blake3 = u"6437b3ac38465133ffb63b75273a8db548c558465d79db03fd359c6cd5bd9d85",
};

inline constexpr KnownDigests DigestsOfNothing = {
    .input = "",
    .md5 = u"d41d8cd98f00b204e9800998ecf8427e",
    .sha1 = u"da39a3ee5e6b4b0d3255bfef95601890afd80709",
    .sha256 = u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855",
    .sha512 =
        u"cf83e1357eefb8bdf1542850d66d8007d620e4050b5715dc83f4a921d36ce9ce"
        u"47d0d13c5d85f2b0ff8318d2877eec2f63b931bd47417a81a538327af927da3e",
    .blake3 = u"af1349b9f5f9a1a6a0404dea36dcc9499bcb25c9adc112b7cc9a93cae41f3262",
};

inline constexpr KnownDigests DigestsOfDigits = {
    .input = "123456789",
    .md5 = u"25f9e794323b453885f5181f1b624d0b",
    .sha1 = u"f7c3bc1d808e04732adf679965ccc34ca7ae3441",
    .sha256 = u"15e2b0d3c33891ebb0f1ef609ec419420c20e320ce94c65fbc8c3312448eb225",
    .sha512 =
        u"d9e6762dd1c8eaf6d61b3c6192fc408d4d6d5f1176d0c29169bc24e71c3f274a"
        u"d27fcd5811b313d681f7e55ec02d73d499c95455b6b5bb503acf574fba8ffe85",
    .blake3 = u"b7d65b48420d1033cb2595293263b6f72eabee20d55e699d0df1973b3c9deed1",
};

inline constexpr std::u16string_view Md4OfAbc = u"a448017aaf21d8525fc10ae87aa6729d";

}  // namespace app::testing
