#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace tessaly {

/// Every way in which an operation on the outside world can fail. `store/ErrorText` puts each into words.
enum class ErrorCode {
    // Preferences
    StorageUnwritable,
    StorageCorrupt,
    StorageMissing, ///< where there are earlier versions of it
    StorageLocked,
    StorageFull,
    StorageNewer,
    StorageFailed,
    // Downloads
    DownloadTimedOut,
    DownloadTooLarge,
    DownloadInsecureRedirect,
    DownloadTooManyRedirects,
    DownloadTlsFailed,
    DownloadCertificateOutdated,
    DownloadCertificateOfOther,
    DownloadCertificateUntrusted,
    DownloadProxyFailed,
    DownloadNoNetwork,
    DownloadHostNotFound,
    DownloadConnectionFailed,
    DownloadIncomplete,
    DownloadAnswerInvalid,
    DownloadStatus, ///< the detail is the status code of HTTP
    DownloadFailed,
    CalendarNotFound, ///< in what was read
    CalendarFileUnreadable,
    TextEncodingInapplicable,
    // System services
    CalendarAccessFailed,
    CalendarWriteFailed,
    CalendarEventMissing,
    LoginItemFailed,
    // Archives
    ArchiveUnreadable,
    ArchiveNewer,
    ArchiveEntryInvalid,
    ArchiveEntryMissing,
    ArchiveTooLarge,
    ArchiveSourceUnreadable,
    ArchiveUnwritable,
};

/// A failure as a value. `detail` is a path or a number, which needs no translation; it may be empty. The messages of
/// libraries have one language, so they become a code or are left out.
struct Error
{
    ErrorCode code = ErrorCode::StorageFailed;
    QString detail = {};

    bool operator==(const Error &) const = default;
};

/// Either a value or the error that prevented it.
template <class T>
class [[nodiscard]] Result
{
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool hasValue() const { return m_state.index() == 0; }
    explicit operator bool() const { return hasValue(); }

    /// Precondition of the next two: hasValue().
    [[nodiscard]] const T &value() const { return std::get<0>(m_state); }
    [[nodiscard]] T takeValue() { return std::move(std::get<0>(m_state)); }
    /// Precondition: !hasValue().
    [[nodiscard]] const Error &error() const { return std::get<1>(m_state); }

private:
    std::variant<T, Error> m_state;
};

/// Success without a value, or an error.
template <>
class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Error error) : m_error(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool hasValue() const { return m_error.index() == 0; }
    explicit operator bool() const { return hasValue(); }
    /// Precondition: !hasValue().
    [[nodiscard]] const Error &error() const { return std::get<1>(m_error); }

private:
    std::variant<std::monostate, Error> m_error;
};

} // namespace tessaly
