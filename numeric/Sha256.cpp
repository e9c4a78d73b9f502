#include "numeric/Sha256.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#define FLOKLUK_SHA_INSTRUCTIONS
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace numeric
{

namespace
{

using State = std::array<std::uint32_t, 8>;
constexpr std::size_t blockSize = 64;

/// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
alignas(16) constexpr std::array<std::uint32_t, 64> constants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

constexpr std::uint32_t rotated(std::uint32_t x, int right)
{
    return x >> right | x << (32 - right);
}

void addBlocksPlainly(State *state, const unsigned char *data, std::size_t blocks)
{
    for (; blocks > 0; --blocks, data += blockSize) {
        std::array<std::uint32_t, 64> w;
        for (std::size_t i = 0; i < 16; ++i)
            w[i] = static_cast<std::uint32_t>(data[4 * i]) << 24 | static_cast<std::uint32_t>(data[4 * i + 1]) << 16 |
                   static_cast<std::uint32_t>(data[4 * i + 2]) << 8 | data[4 * i + 3];
        for (std::size_t i = 16; i < 64; ++i) {
            const std::uint32_t early = w[i - 15], late = w[i - 2];
            w[i] = w[i - 16] + w[i - 7] + (rotated(early, 7) ^ rotated(early, 18) ^ early >> 3) +
                   (rotated(late, 17) ^ rotated(late, 19) ^ late >> 10);
        }
        auto [a, b, c, d, e, f, g, h] = *state;
        for (std::size_t i = 0; i < 64; ++i) {
            const std::uint32_t t1 =
                h + (rotated(e, 6) ^ rotated(e, 11) ^ rotated(e, 25)) + ((e & f) ^ (~e & g)) + constants[i] + w[i];
            const std::uint32_t t2 = (rotated(a, 2) ^ rotated(a, 13) ^ rotated(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
            h = g;
            g = f;
            f = e;
            e = d + t1;
            d = c;
            c = b;
            b = a;
            a = t1 + t2;
        }
        const State added = {a, b, c, d, e, f, g, h};
        for (std::size_t i = 0; i < added.size(); ++i)
            (*state)[i] += added[i];
    }
}

#ifdef FLOKLUK_SHA_INSTRUCTIONS

/// Intel's SHA extensions, of which sha256rnds2 does two rounds. It keeps the state as (a, b, e, f) and (c, d, g, h),
/// highest element first, where `State` has a ... h from the lowest.
__attribute__((target("sha,sse4.1"))) void addBlocksFast(State *state, const unsigned char *data, std::size_t blocks)
{
    const auto load = [](const void *from) __attribute__((target("sha,sse4.1")))
    {
        return _mm_loadu_si128(static_cast<const __m128i *>(from));
    };
    const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
    const __m128i badc = _mm_shuffle_epi32(load(state->data()), 0xb1);
    const __m128i efgh = _mm_shuffle_epi32(load(state->data() + 4), 0x1b);
    __m128i abef = _mm_alignr_epi8(badc, efgh, 8);
    __m128i cdgh = _mm_blend_epi16(efgh, badc, 0xf0);
    for (; blocks > 0; --blocks, data += blockSize) {
        const __m128i abefBefore = abef, cdghBefore = cdgh;
        __m128i w[4]; // the last sixteen words of the schedule
        for (int i = 0; i < 16; ++i) {
            __m128i &now = w[i % 4];
            if (i < 4) {
                now = _mm_shuffle_epi8(load(data + 16 * i), bigEndian);
            } else {
                const __m128i &last = w[(i + 3) % 4], &second = w[(i + 2) % 4];
                now = _mm_add_epi32(_mm_sha256msg1_epu32(now, w[(i + 1) % 4]), _mm_alignr_epi8(last, second, 4));
                now = _mm_sha256msg2_epu32(now, last);
            }
            const __m128i sum = _mm_add_epi32(now, load(constants.data() + 4 * i));
            cdgh = _mm_sha256rnds2_epu32(cdgh, abef, sum);
            abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(sum, 0x0e));
        }
        abef = _mm_add_epi32(abef, abefBefore);
        cdgh = _mm_add_epi32(cdgh, cdghBefore);
    }
    const __m128i feba = _mm_shuffle_epi32(abef, 0x1b);
    const __m128i dchg = _mm_shuffle_epi32(cdgh, 0xb1);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(state->data()), _mm_blend_epi16(feba, dchg, 0xf0));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(state->data() + 4), _mm_alignr_epi8(dchg, feba, 8));
}

/// Leaf 7 of the processor's identification has the extensions as bit 29 of EBX; SSE 4.1 is bit 19 of ECX in leaf 1.
bool hasShaInstructions()
{
    unsigned a = 0, b = 0, c = 0, d = 0;
    const bool hasSse = __get_cpuid(1, &a, &b, &c, &d) != 0 && (c >> 19 & 1) != 0;
    return hasSse && __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b >> 29 & 1) != 0;
}

#endif

void addBlocks(State *state, const unsigned char *data, std::size_t blocks)
{
#ifdef FLOKLUK_SHA_INSTRUCTIONS
    static const bool isFast = hasShaInstructions();
    if (isFast)
        return addBlocksFast(state, data, blocks);
#endif
    addBlocksPlainly(state, data, blocks);
}

} // namespace

void Sha256::add(const char *data, std::size_t size)
{
    m_size += size;
    const auto *bytes = reinterpret_cast<const unsigned char *>(data);
    if (m_inBlock > 0) {
        const std::size_t taken = std::min(size, blockSize - m_inBlock);
        std::memcpy(m_block.data() + m_inBlock, bytes, taken);
        m_inBlock += taken;
        bytes += taken;
        size -= taken;
        if (m_inBlock < blockSize)
            return;
        addBlocks(&m_state, m_block.data(), 1);
    }
    addBlocks(&m_state, bytes, size / blockSize);
    m_inBlock = size % blockSize;
    if (m_inBlock > 0)
        std::memcpy(m_block.data(), bytes + (size - m_inBlock), m_inBlock);
}

QByteArray Sha256::result()
{
    constexpr std::size_t lengthPlace = 56; // in the last block, big-endian, in bits
    const std::uint64_t bits = m_size * 8;
    const QByteArray padding(static_cast<int>((lengthPlace + blockSize - 1 - m_inBlock) % blockSize), '\0');
    add("\x80", 1);
    add(padding.constData(), static_cast<std::size_t>(padding.size()));
    QByteArray length;
    for (int shift = 56; shift >= 0; shift -= 8)
        length += static_cast<char>(bits >> shift & 0xff);
    add(length.constData(), static_cast<std::size_t>(length.size()));
    QByteArray bytes;
    for (const std::uint32_t word : m_state) {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(word >> shift & 0xff);
    }
    return bytes.toHex();
}

QByteArray sha256OfFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return QByteArray();
    Sha256 sum;
    QByteArray piece(1 << 20, Qt::Uninitialized);
    qint64 length = 0;
    while ((length = file.read(piece.data(), piece.size())) > 0)
        sum.add(piece.constData(), static_cast<std::size_t>(length));
    return length == 0 ? sum.result() : QByteArray();
}

} // namespace numeric
