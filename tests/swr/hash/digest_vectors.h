// Made by make_length_vectors.py, which says where the values come from. Not edited by hand.
#pragma once

#include <cstddef>
#include <string_view>

#include "swr/hash/algorithms.h"

namespace swr::testing {

// Digests as lower-case hexadecimal text.
struct DigestVectors {
  AlgoId id;
  std::string_view ofEmpty;
  std::string_view ofAbc;         // "abc"
  std::string_view ofNineDigits;  // "123456789"
  std::string_view ofMillionA;    // "a", a million times
  // SHA-256 of the digests of all lengths from 0 to LongestVectorLength, one after the other. The
  // inputs are CountingBytes.
  std::string_view ofAllLengths;
};

inline constexpr size_t LongestVectorLength = 4097;

inline constexpr DigestVectors digestVectors[] = {
    {.id = AlgoId::Crc32,
     .ofEmpty = "00000000",
     .ofAbc = "352441c2",
     .ofNineDigits = "cbf43926",
     .ofMillionA = "dc25bfbc",
     .ofAllLengths = "1134a240d9ac703a98bf07368e527c36fb6a3c4e0544616ca28ad3840b4329ea"},
    {.id = AlgoId::Md5,
     .ofEmpty = "d41d8cd98f00b204e9800998ecf8427e",
     .ofAbc = "900150983cd24fb0d6963f7d28e17f72",
     .ofNineDigits = "25f9e794323b453885f5181f1b624d0b",
     .ofMillionA = "7707d6ae4e027c70eea2a935c2296f21",
     .ofAllLengths = "ea658ecff2e839594f0a9236a70a9dbaf385eaca2765b5c6d2e86b8a1046aa76"},
    {.id = AlgoId::Sha1,
     .ofEmpty = "da39a3ee5e6b4b0d3255bfef95601890afd80709",
     .ofAbc = "a9993e364706816aba3e25717850c26c9cd0d89d",
     .ofNineDigits = "f7c3bc1d808e04732adf679965ccc34ca7ae3441",
     .ofMillionA = "34aa973cd4c4daa4f61eeb2bdbad27316534016f",
     .ofAllLengths = "795054ac52dad86748ca8b3fc9edab562ffa4bd66c4723b8dc2343b325c33131"},
    {.id = AlgoId::Sha256,
     .ofEmpty = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855",
     .ofAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
     .ofNineDigits = "15e2b0d3c33891ebb0f1ef609ec419420c20e320ce94c65fbc8c3312448eb225",
     .ofMillionA = "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0",
     .ofAllLengths = "32de473a7e494f1d66bb243af28f2019727502d804ef9a2fa5c2409f9634a2f2"},
    {.id = AlgoId::Sha384,
     .ofEmpty = "38b060a751ac96384cd9327eb1b1e36a21fdb71114be07434c0cc7bf63f6e1da274edebfe76f65fbd5"
                "1ad2f14898b95b",
     .ofAbc = "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358ba"
              "eca134c825a7",
     .ofNineDigits = "eb455d56d2c1a69de64e832011f3393d45f3fa31d6842f21af92d2fe469c499da5e3179847334"
                     "a18479c8d1dedea1be3",
     .ofMillionA = "9d0e1809716474cb086e834e310a4a1ced149e9c00f248527972cec5704c2a5b07b8b3dc38ecc4e"
                   "bae97ddd87f3d8985",
     .ofAllLengths = "f4880f8a8de31035d10264186def45376d1b54c79a27b7a36fcd8120602dfba0"},
    {.id = AlgoId::Sha512,
     .ofEmpty = "cf83e1357eefb8bdf1542850d66d8007d620e4050b5715dc83f4a921d36ce9ce47d0d13c5d85f2b0ff"
                "8318d2877eec2f63b931bd47417a81a538327af927da3e",
     .ofAbc = "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba"
              "3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f",
     .ofNineDigits = "d9e6762dd1c8eaf6d61b3c6192fc408d4d6d5f1176d0c29169bc24e71c3f274ad27fcd5811b31"
                     "3d681f7e55ec02d73d499c95455b6b5bb503acf574fba8ffe85",
     .ofMillionA = "e718483d0ce769644e2e42c7bc15b4638e1f98b13b2044285632a803afa973ebde0ff244877ea60"
                   "a4cb0432ce577c31beb009c5c2c49aa2e4eadb217ad8cc09b",
     .ofAllLengths = "c803ae01718b1461a73c32a79527c121b9c93ed04d8d6f10a24674b66c5b21cd"},
    {.id = AlgoId::Sha3_256,
     .ofEmpty = "a7ffc6f8bf1ed76651c14756a061d662f580ff4de43b49fa82d80a4b80f8434a",
     .ofAbc = "3a985da74fe225b2045c172d6bd390bd855f086e3e9d525b46bfe24511431532",
     .ofNineDigits = "87cd084d190e436f147322b90e7384f6a8e0676c99d21ef519ea718e51d45f9c",
     .ofMillionA = "5c8875ae474a3634ba4fd55ec85bffd661f32aca75c6d699d0cdcb6c115891c1",
     .ofAllLengths = "494126e059418b52722f619a7e633ed98c62aa75f41984cc95a01cbd33c05b08"},
    {.id = AlgoId::Sha3_384,
     .ofEmpty = "0c63a75b845e4f7d01107d852e4c2485c51a50aaaa94fc61995e71bbee983a2ac3713831264adb47fb"
                "6bd1e058d5f004",
     .ofAbc = "ec01498288516fc926459f58e2c6ad8df9b473cb0fc08c2596da7cf0e49be4b298d88cea927ac7f539f1"
              "edf228376d25",
     .ofNineDigits = "8b90ede4d095409f1a12492c2520599683a9478dc70b7566d23b3e41ece8538c6cde92382a5e3"
                     "8786490375c54672abf",
     .ofMillionA = "eee9e24d78c1855337983451df97c8ad9eedf256c6334f8e948d252d5e0e76847aa0774ddb90a84"
                   "2190d2c558b4b8340",
     .ofAllLengths = "4b2902c5179f78a376969ebdb8bd13157dbef35ca642bd10dac02c772e7151a3"},
    {.id = AlgoId::Sha3_512,
     .ofEmpty = "a69f73cca23a9ac5c8b567dc185a756e97c982164fe25859e0d1dcc1475c80a615b2123af1f5f94c11"
                "e3e9402c3ac558f500199d95b6d3e301758586281dcd26",
     .ofAbc = "b751850b1a57168a5693cd924b6b096e08f621827444f70d884f5d0240d2712e10e116e9192af3c91a7e"
              "c57647e3934057340b4cf408d5a56592f8274eec53f0",
     .ofNineDigits = "e1e44d20556e97a180b6dd3ed7ae5c465cafd553fa8747dca038fb95635b77a37318f7ddf7aec"
                     "1f6c3c14bb160ba2497007decf38dd361cab199e3b8c8fe1f5c",
     .ofMillionA = "3c3a876da14034ab60627c077bb98f7e120a2a5370212dffb3385a18d4f38859ed311d0a9d5141c"
                   "e9cc5c66ee689b266a8aa18ace8282a0e0db596c90b0a7b87",
     .ofAllLengths = "9dfa394310237cd0af9cc860a0b110deb4cb89e6c6e320f9da86994389b6354d"},
    {.id = AlgoId::Blake3,
     .ofEmpty = "af1349b9f5f9a1a6a0404dea36dcc9499bcb25c9adc112b7cc9a93cae41f3262",
     .ofAbc = "6437b3ac38465133ffb63b75273a8db548c558465d79db03fd359c6cd5bd9d85",
     .ofNineDigits = "b7d65b48420d1033cb2595293263b6f72eabee20d55e699d0df1973b3c9deed1",
     .ofMillionA = "616f575a1b58d4c9797d4217b9730ae5e6eb319d76edef6549b46f4efe31ff8b",
     .ofAllLengths = "3687e29681e63b90ea9c877a7cd03e300b77d82c10cf3af16a21a704fac85841"},
    {.id = AlgoId::Xxh64,
     .ofEmpty = "ef46db3751d8e999",
     .ofAbc = "44bc2cf5ad770999",
     .ofNineDigits = "8cb841db40e6ae83",
     .ofMillionA = "dc483aaa9b4fdc40",
     .ofAllLengths = "fe7dd6d9cf85daa1f1ba74d0b8d673b85184e489bcc6114c268ecbd8c4afbae5"},
    {.id = AlgoId::Xxh3_64,
     .ofEmpty = "2d06800538d394c2",
     .ofAbc = "78af5f94892f3950",
     .ofNineDigits = "72dcb18b67a17dff",
     .ofMillionA = "b1fd6fae5285c4eb",
     .ofAllLengths = "8843b446598edae9035cb1f7fcd3dd0055a5fa4612ffdde577eb608e7501c7ce"},
    {.id = AlgoId::Xxh128,
     .ofEmpty = "99aa06d3014798d86001c324468d497f",
     .ofAbc = "06b05ab6733a618578af5f94892f3950",
     .ofNineDigits = "33119477ede5dcd5e9716427681d5860",
     .ofMillionA = "a545df8e384a9579b1fd6fae5285c4eb",
     .ofAllLengths = "6acb71cd442b4a7bf0c377195f24ee75e36976c72f64f6a9dfd80174a567c767"},
    {.id = AlgoId::Md2,
     .ofEmpty = "8350e5a3e24c153df2275c9f80692773",
     .ofAbc = "da853b0d3f88d99b30283a69e6ded6bb",
     .ofNineDigits = "12bd4efdd922b5c8c7b773f26ef4e35f",
     .ofMillionA = "8c0a09ff1216ecaf95c8130953c62efd",
     .ofAllLengths = "e050cf34be79e308801a3b8385fb7e3f2a05b6274f6619efb42831d9cbbcda62"},
    {.id = AlgoId::Md4,
     .ofEmpty = "31d6cfe0d16ae931b73c59d7e0c089c0",
     .ofAbc = "a448017aaf21d8525fc10ae87aa6729d",
     .ofNineDigits = "2ae523785d0caf4d2fb557c12016185c",
     .ofMillionA = "bbce80cc6bb65e5c6745e30d4eeca9a4",
     .ofAllLengths = "faaebe84f75da65883bfa8a7c06446e5e728d1923be580ef8bfadc1670baf4f1"},
};

// SHA-3 around its block length: with one byte less both padding bits share a byte, and with a
// whole block the padding has a block of its own. The inputs are CountingBytes.
struct Sha3BlockVectors {
  AlgoId id;
  size_t rate;  // bytes of a block
  std::string_view ofRateLessOne;
  std::string_view ofRate;
};

inline constexpr Sha3BlockVectors sha3BlockVectors[] = {
    {.id = AlgoId::Sha3_256,
     .rate = 136,
     .ofRateLessOne = "fded8fd9d6551c601eeb3b7c6bc5e5cfd8aad1d015b7e9aaa9c9b9475231d5e2",
     .ofRate = "cf3ccff92480a29160c2d38317c430e14749bfee1788106957dfe73f8c4930e5"},
    {.id = AlgoId::Sha3_384,
     .rate = 104,
     .ofRateLessOne = "1f91ee551ad18f268876d1fc262f137fe196580216c5193819a95ec5222537d2a658dd129c3d"
                      "8080e65ec7460f1f4704",
     .ofRate = "5b8d0d5cf8b41be507be8fcbfcbdbac3a28eb368d430fed6780aaa78a93a8da4a6c50485949ca344f22"
               "8be91a96005a3"},
    {.id = AlgoId::Sha3_512,
     .rate = 72,
     .ofRateLessOne = "3ccc850d53a1287af7b4560b2ef0d43eb5d9a80d62a0e9cf1dbc040135921104d4395168e90b"
                      "fc871773ebb34bca1bd67056e1cc7dc7a48ff7c3167d389f117c",
     .ofRate = "5d63f2bbe971a983ac6847480106e4e1264ee3a0befd79954914e1d86e795b2e18238f12fc5e46cb9cc"
               "78efdec610a93647cc04e1c23d8caaa6a58c21dd26c07"},
};

// The longest piece that goes to the Windows provider in one call, and digests of an input that is
// 4,097 bytes longer: zeros but for 1 at the start, 2 and 3 at both sides of the limit and 4 at the
// end.
inline constexpr size_t ProviderPieceLimit = 1073741824;
inline constexpr std::string_view md5OverPieceLimit = "c920eb0b1558b847ea37e43cb1cb2681";
inline constexpr std::string_view sha256OverPieceLimit =
    "1fc664a35267ea1b6bf1e8805094884a062089db3931b873077cfa5f0e8c802c";

}  // namespace swr::testing
