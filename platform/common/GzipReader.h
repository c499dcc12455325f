#pragma once

#include <QByteArray>

#include <memory>

struct z_stream_s;

namespace tessaly {

/// Decompresses a gzip file (RFC 1952), also of several members, piece by piece.
class GzipReader
{
public:
    GzipReader();
    ~GzipReader();
    Q_DISABLE_COPY_MOVE(GzipReader)

    /// Appends what the next compressed bytes give, but stops soon after the output is longer than `limit` bytes. False
    /// when the input is not gzip or is damaged. Bytes behind the last member are ignored.
    [[nodiscard]] bool read(const QByteArray &input, QByteArray &output, qsizetype limit);
    /// Whether the input ended where a member did; false before the first byte.
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }

private:
    std::unique_ptr<z_stream_s> m_stream;
    bool m_isAtEnd = false;
};

} // namespace tessaly
