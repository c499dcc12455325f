#include "platform/common/GzipReader.h"

#include <array>

#define ZLIB_CONST
#include <zlib.h>

namespace tessaly {

namespace {

constexpr int gzipOnly = MAX_WBITS + 16;
constexpr char firstMagicByte = '\x1F';

} // namespace

GzipReader::GzipReader() : m_stream(std::make_unique<z_stream_s>())
{
    const int result = inflateInit2(m_stream.get(), gzipOnly);
    if (result != Z_OK)
        qBadAlloc();
}

GzipReader::~GzipReader()
{
    inflateEnd(m_stream.get());
}

bool GzipReader::read(const QByteArray &input, QByteArray &output, qsizetype limit)
{
    std::array<char, 65536> piece;
    m_stream->next_in = reinterpret_cast<const Bytef *>(input.constData());
    m_stream->avail_in = static_cast<uInt>(input.size());
    do {
        if (m_isAtEnd && m_stream->avail_in > 0) {
            if (*m_stream->next_in != static_cast<Bytef>(firstMagicByte))
                return true;
            inflateReset(m_stream.get());
            m_isAtEnd = false;
        }
        m_stream->next_out = reinterpret_cast<Bytef *>(piece.data());
        m_stream->avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
            return false;
        m_isAtEnd = result == Z_STREAM_END;
        output.append(piece.data(), static_cast<qsizetype>(piece.size() - m_stream->avail_out));
    } while ((m_stream->avail_in > 0 || m_stream->avail_out == 0) && output.size() <= limit);
    return true;
}

} // namespace tessaly
