#!/usr/bin/env python3
"""Prints digest_vectors.h: digests of known inputs, as other programs compute them.

    tests/swr/hash/make_length_vectors.py | clang-format --assume-filename=x.h \\
        > tests/swr/hash/digest_vectors.h

MD5, SHA-1, SHA-2 and SHA-3 come from Python's hashlib, CRC32 from its zlib, MD4 from rhash, BLAKE3
from b3sum and the xxHash family from xxhsum. None of these offers MD2, so it is implemented below
according to RFC 1319 and checked against the test suite of that document.
"""

import hashlib
import os
import re
import subprocess
import sys
import tempfile
import zlib

LONGEST = 4097
PIECE_LIMIT = 0x40000000


def counting_bytes(size):
    return bytes(i % 251 for i in range(size))


def pi_digits():
    """The decimal digits of pi, by Gibbons' spigot."""
    q, r, t, k, n, l = 1, 0, 1, 1, 3, 3
    while True:
        if 4 * q + r - t < n * t:
            yield n
            q, r, n = 10 * q, 10 * (r - n * t), (10 * (3 * q + r)) // t - 10 * n
        else:
            q, r, t, k, n, l = (q * k, (2 * q + r) * l, t * l, k + 1,
                                (q * (7 * k + 2) + r * l) // (t * l), l + 2)


def md2_permutation():
    """The permutation of RFC 1319, shuffled by the digits of pi."""
    digits = pi_digits()

    def below(n):
        while True:
            value, limit = next(digits), 10
            while limit < n:
                value, limit = value * 10 + next(digits), limit * 10
            if value < n * (limit // n):
                return value % n

    table = list(range(256))
    for i in range(2, 257):
        j = below(i)
        table[j], table[i - 1] = table[i - 1], table[j]
    return table


MD2_TABLE = md2_permutation()


class Md2:
    def __init__(self):
        self.state, self.checksum = bytes(16), bytes(16)

    def with_block(self, block):
        """The state after one more whole block; this object is not changed."""
        after = Md2()
        checksum, last = bytearray(self.checksum), self.checksum[15]
        for i in range(16):
            checksum[i] ^= MD2_TABLE[block[i] ^ last]
            last = checksum[i]
        after.state, after.checksum = self.mixed_with(block), bytes(checksum)
        return after

    def mixed_with(self, block):
        x = bytearray(self.state + block + bytes(a ^ b for a, b in zip(self.state, block)))
        t = 0
        for i in range(18):
            for j in range(48):
                t = x[j] = x[j] ^ MD2_TABLE[t]
            t = (t + i) & 255
        return bytes(x[:16])

    def digest(self, rest):
        padding = 16 - len(rest)
        padded = self.with_block(rest + bytes([padding]) * padding)
        return padded.mixed_with(padded.checksum)


def md2(messages):
    """If a message begins with the previous one, the common blocks are processed only once."""
    digests, hasher, blocks, previous = [], Md2(), 0, b""
    for message in messages:
        if not message.startswith(previous):
            hasher, blocks = Md2(), 0
        previous = message
        while (blocks + 1) * 16 <= len(message):
            hasher = hasher.with_block(message[blocks * 16:(blocks + 1) * 16])
            blocks += 1
        digests.append(hasher.digest(message[blocks * 16:]))
    return digests


def check_md2():
    suite = {  # RFC 1319, appendix A.5
        b"": "8350e5a3e24c153df2275c9f80692773",
        b"a": "32ec01ec4a6dac72c0ab96fb34c0b5d1",
        b"abc": "da853b0d3f88d99b30283a69e6ded6bb",
        b"message digest": "ab4f496bfb2a530b219ff33031fe06b0",
        b"abcdefghijklmnopqrstuvwxyz": "4e8ddff3650292ab5a4108c3aa47940b",
        b"1234567890" * 8: "d5976f79d83d3a0dc9806c3c66f3efd8",
    }
    for message, digest in suite.items():
        if md2([message])[0].hex() != digest:
            sys.exit(f"MD2 is wrong for {message}")


def by_hashlib(name):
    return lambda messages: [hashlib.new(name, message).digest() for message in messages]


def by_tool(command, digest_size):
    """A tool that prints one line for each file, with the digest somewhere in it."""
    digits = re.compile(rb"(?<![0-9a-fA-F])[0-9a-fA-F]{%d}(?![0-9a-fA-F])" % (digest_size * 2))

    def digests_of(messages):
        with tempfile.TemporaryDirectory() as folder:
            names = [f"n{i}.x" for i in range(len(messages))]
            for name, message in zip(names, messages):
                with open(os.path.join(folder, name), "wb") as file:
                    file.write(message)
            output = subprocess.run(command + names, cwd=folder, check=True,
                                    stdout=subprocess.PIPE).stdout
        lines = [line for line in output.splitlines() if line and not line.startswith(b";")]
        assert len(lines) == len(messages), command
        return [bytes.fromhex(digits.search(line).group().decode()) for line in lines]

    return digests_of


ALGORITHMS = {
    "Crc32": lambda messages: [zlib.crc32(m).to_bytes(4, "big") for m in messages],
    "Md5": by_hashlib("md5"),
    "Sha1": by_hashlib("sha1"),
    "Sha256": by_hashlib("sha256"),
    "Sha384": by_hashlib("sha384"),
    "Sha512": by_hashlib("sha512"),
    "Sha3_256": by_hashlib("sha3-256"),
    "Sha3_384": by_hashlib("sha3-384"),
    "Sha3_512": by_hashlib("sha3-512"),
    "Blake3": by_tool(["b3sum"], 32),
    "Xxh64": by_tool(["xxhsum", "-H1"], 8),
    "Xxh3_64": by_tool(["xxhsum", "-H3"], 8),
    "Xxh128": by_tool(["xxhsum", "-H2"], 16),
    "Md2": md2,
    "Md4": by_tool(["rhash", "--simple", "--md4"], 16),
}

SHA3_RATES = {"Sha3_256": 136, "Sha3_384": 104, "Sha3_512": 72}


def over_piece_limit(name):
    """Zeros but for the bytes around the limit of one call of the Windows provider."""
    hasher = hashlib.new(name)
    hasher.update(b"\x01")
    zeros = bytes(1 << 20)
    rest = PIECE_LIMIT - 2
    while rest:
        n = min(rest, len(zeros))
        hasher.update(zeros[:n])
        rest -= n
    hasher.update(b"\x02\x03" + bytes(4095) + b"\x04")
    return hasher.hexdigest()


def main():
    check_md2()
    print("""// Made by make_length_vectors.py, which says where the values come from. Not edited by hand.
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
""")
    print(f"inline constexpr size_t LongestVectorLength = {LONGEST};\n")
    print("inline constexpr DigestVectors digestVectors[] = {")
    whole = counting_bytes(LONGEST)
    lengths = [whole[:n] for n in range(LONGEST + 1)]
    for name, digests_of in ALGORITHMS.items():
        known = [d.hex() for d in digests_of([b"", b"abc", b"123456789", b"a" * 1000000])]
        all_lengths = hashlib.sha256(b"".join(digests_of(lengths))).hexdigest()
        fields = ["ofEmpty", "ofAbc", "ofNineDigits", "ofMillionA", "ofAllLengths"]
        print(f"{{.id = AlgoId::{name},")
        print(",\n".join(f'.{f} = "{v}"' for f, v in zip(fields, known + [all_lengths])) + "},")
    print("""};

// SHA-3 around its block length: with one byte less both padding bits share a byte, and with a whole
// block the padding has a block of its own. The inputs are CountingBytes.
struct Sha3BlockVectors {
  AlgoId id;
  size_t rate;  // bytes of a block
  std::string_view ofRateLessOne;
  std::string_view ofRate;
};

inline constexpr Sha3BlockVectors sha3BlockVectors[] = {""")
    for name, rate in SHA3_RATES.items():
        less, exact = (d.hex() for d in ALGORITHMS[name]([whole[:rate - 1], whole[:rate]]))
        print(f'{{.id = AlgoId::{name}, .rate = {rate}, .ofRateLessOne = "{less}", '
              f'.ofRate = "{exact}"}},')
    print("""};

// The longest piece that goes to the Windows provider in one call, and digests of an input that is
// 4,097 bytes longer: zeros but for 1 at the start, 2 and 3 at both sides of the limit and 4 at the
// end.""")
    print(f"inline constexpr size_t ProviderPieceLimit = {PIECE_LIMIT};")
    print(f'inline constexpr std::string_view md5OverPieceLimit = "{over_piece_limit("md5")}";')
    print('inline constexpr std::string_view sha256OverPieceLimit = '
          f'"{over_piece_limit("sha256")}";')
    print("\n}  // namespace swr::testing")


main()
