/// Known results of the hash functions, and that hashing in pieces equals hashing at once.
#include <Alembic/Util/Digest.h>
#include <Alembic/Util/Murmur3.h>
#include <Alembic/Util/SpookyV2.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace Alembic::Util;

namespace {

std::vector<uint8_t> test_bytes(size_t count)
{
    std::vector<uint8_t> bytes(count);
    for (size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<uint8_t>(7 * i + 3);
    return bytes;
}

std::string murmur(const void* bytes, size_t count)
{
    Digest digest;
    MurmurHash3_x64_128(bytes, count, 1, digest.d);
    return digest.str();
}

std::string spooky(const void* bytes, size_t count, uint64_t seed1 = 0, uint64_t seed2 = 0)
{
    Digest digest;
    digest.words[0] = seed1;
    digest.words[1] = seed2;
    SpookyHash::Hash128(bytes, count, &digest.words[0], &digest.words[1]);
    return digest.str();
}

struct Known
{
    size_t byte_count;
    const char* result;
};

const std::string fox = "The quick brown fox jumps over the lazy dog";

} // namespace

TEST(Murmur3, GivesTheKnownResults)
{
    const Known known[] = {
        {0, "00000000000000000000000000000000"},    {1, "593e6a30ddc66a72e4a8b5c52711714e"},
        {7, "a1e36c2354bfcbbe50ef9ce392a43b2b"},    {8, "bdd332919a2aeea53a007e613a7f9e25"},
        {9, "b6dbfa0aa12eba5196041e13c353811f"},    {12, "70a03ecf9888409215f2b4af57d10f7b"},
        {15, "f4e4ad805e4b6aba6df2e8f78f5a0ee0"},   {16, "a14e8f2fc599b0c448fe2ad91902677d"},
        {17, "27b153fe394baed4e9db81663b450266"},   {33, "1a2ff7c4d85767b1a6602d0756ee7191"},
        {1000, "49aadcbaef89f70a6b54bbd9b9a1d80b"},
    };
    for (const Known& k : known)
        EXPECT_EQ(murmur(test_bytes(k.byte_count).data(), k.byte_count), k.result) << k.byte_count << " bytes";
    EXPECT_EQ(murmur(nullptr, 0), known[0].result);
    EXPECT_EQ(murmur(fox.data(), fox.size()), "6c1b07bc7bbc4be347939ac4a93c437a");
}

TEST(SpookyV2, GivesTheKnownResults)
{
    const Known known[] = {
        {0, "1909f56bfc062723c751e8b465ee728b"},    {1, "30ff9c894cfa874ba576111a658bb681"},
        {3, "6219cb8c14d27057452fd88ab0ca0b13"},    {7, "422cb0be12949ea9eb8932b5bb0d8a68"},
        {8, "fdc5a396e888fa931978ef9a765d69d5"},    {12, "e3b807c96f30c055a496c0eeb40f5888"},
        {15, "e9fcf3a55725ff8055ed74303024919f"},   {16, "edc4d07c4d236b99d7fa5d200f8f808a"},
        {17, "b132455de0f7fde0fd796d0abc84ec7e"},   {32, "f4400e6985990be1362d8493f14c5528"},
        {63, "4d1fdf649cae1cca2d416ef28f5c0850"},   {191, "0400e72167558b5a43cb7a1aa68bbebf"},
        {192, "cfb9b3c11f23d54b76f4d66207440df7"},  {193, "c2b37456be9e8f89a21a94f0ba9f52e9"},
        {287, "ecb0bc9626b160ef7c9af940441c894b"},  {288, "fbae789466efa270605170aa052a8f33"},
        {1000, "051ba518322d078548bfb5a92c671224"},
    };
    for (const Known& k : known)
        EXPECT_EQ(spooky(test_bytes(k.byte_count).data(), k.byte_count), k.result) << k.byte_count << " bytes";
    EXPECT_EQ(spooky(fox.data(), fox.size()), "c79306aa46e8122b1b340724747e361d");

    const uint64_t seed1 = 0x0123456789ABCDEF;
    const uint64_t seed2 = 0xFEDCBA9876543210;
    EXPECT_EQ(spooky(test_bytes(20).data(), 20, seed1, seed2), "aef9ee25b9a4c2046be3b5aad3006724");
    EXPECT_EQ(spooky(test_bytes(300).data(), 300, seed1, seed2), "ed6c77eb4cc27f9cba098a977ef4ace6");
}

TEST(SpookyV2, MixesTheEndAsKnown)
{
    uint64_t h[4] = {1, 2, 3, 4};
    SpookyHash::ShortEnd(h[0], h[1], h[2], h[3]);
    EXPECT_EQ(h[0], 0xd05bc6ce4c6b2efeu);
    EXPECT_EQ(h[1], 0x8616ffe259af1463u);
    EXPECT_EQ(h[2], 0xcc8d19644d5efeddu);
    EXPECT_EQ(h[3], 0x6491d728a1b49620u);
}

// However a message is cut, and whatever was asked for in between, the result is that of the whole.
TEST(SpookyV2, PiecesGiveTheHashOfTheWhole)
{
    const unsigned seed = 20240817;
    std::mt19937 random(seed);
    const std::vector<uint8_t> bytes = test_bytes(700);
    for (int round = 0; round < 2000; ++round) {
        const size_t total = random() % bytes.size();
        SpookyHash hash;
        hash.Init(5, 6);
        size_t position = 0;
        while (position < total) {
            const size_t piece = std::min<size_t>(random() % (1 + (round % 7 + 1) * 50), total - position);
            hash.Update(bytes.data() + position, piece);
            position += piece;
            if (random() % 8 == 0) {
                Digest so_far;
                hash.Final(&so_far.words[0], &so_far.words[1]);
                ASSERT_EQ(so_far.str(), spooky(bytes.data(), position, 5, 6)) << "seed " << seed;
            }
        }
        Digest whole;
        hash.Final(&whole.words[0], &whole.words[1]);
        ASSERT_EQ(whole.str(), spooky(bytes.data(), total, 5, 6)) << "seed " << seed << ", " << total << " bytes";
    }
}
