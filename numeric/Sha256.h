#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>

namespace numeric
{

/// SHA-256 (FIPS 180-4, section 6.2) of bytes that come piece by piece. QCryptographicHash takes a third longer, and
/// nine times as long where the processor has instructions for it: result files of large maps have hundreds of
/// megabytes.
class Sha256
{
public:
    void add(const char *data, std::size_t size);
    /// 64 hexadecimal digits; nothing may be added afterwards.
    QByteArray result();

private:
    std::array<std::uint32_t, 8> m_state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                            0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, 64> m_block = {};
    std::size_t m_inBlock = 0;
    std::uint64_t m_size = 0; ///< bytes
};

/// Of a file's contents, hexadecimal. Empty when it cannot be read to its end or is no plain file.
QByteArray sha256OfFile(const QString &path);

} // namespace numeric
