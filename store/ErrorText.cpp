#include "store/ErrorText.h"

#include <algorithm>
#include <optional>

namespace tessaly {

namespace {

struct Words
{
    const char16_t *chinese;
    const char16_t *english;
};

// No default: a new code without words is a compiler warning.
Words words(ErrorCode code)
{
    switch (code) {
    case ErrorCode::StorageUnwritable:
        return {u"无法写入数据文件夹", u"The data folder cannot be written"};
    case ErrorCode::StorageCorrupt:
        return {u"数据文件已损坏", u"The data file is damaged"};
    case ErrorCode::StorageMissing:
        return {u"数据文件不见了", u"The data file is missing"};
    case ErrorCode::StorageLocked:
        return {u"数据文件正被另一个程序使用", u"The data file is in use by another program"};
    case ErrorCode::StorageFull:
        return {u"磁盘空间不足", u"The disk is full"};
    case ErrorCode::StorageNewer:
        return {u"数据文件来自更新的版本", u"The data file was written by a newer version"};
    case ErrorCode::StorageFailed:
        return {u"数据文件读写失败", u"The data file could not be read or written"};
    case ErrorCode::DownloadTimedOut:
        return {u"服务器长时间没有响应", u"The server did not answer in time"};
    case ErrorCode::DownloadTooLarge:
        return {u"文件超过 64 MB，无法导入", u"The file is larger than 64 MB"};
    case ErrorCode::DownloadInsecureRedirect:
        return {u"链接被转到不安全的地址", u"The link leads on to an insecure address"};
    case ErrorCode::DownloadTooManyRedirects:
        return {u"链接的重定向次数过多", u"The link is redirected too many times"};
    case ErrorCode::DownloadTlsFailed:
        return {u"无法建立安全连接", u"A secure connection could not be made"};
    case ErrorCode::DownloadCertificateOutdated:
        return {u"服务器的证书已过期或尚未生效", u"The server's certificate has expired or is not valid yet"};
    case ErrorCode::DownloadCertificateOfOther:
        return {u"服务器的证书属于另一个地址", u"The server's certificate belongs to another address"};
    case ErrorCode::DownloadCertificateUntrusted:
        return {u"服务器的证书不受信任", u"The server's certificate is not trusted"};
    case ErrorCode::DownloadProxyFailed:
        return {u"无法使用代理服务器", u"The proxy server could not be used"};
    case ErrorCode::DownloadNoNetwork:
        return {u"没有网络", u"There is no network"};
    case ErrorCode::DownloadHostNotFound:
        return {u"找不到服务器", u"The server could not be found"};
    case ErrorCode::DownloadConnectionFailed:
        return {u"无法连接到服务器", u"Could not connect to the server"};
    case ErrorCode::DownloadIncomplete:
        return {u"下载中途断开", u"The download broke off"};
    case ErrorCode::DownloadAnswerInvalid:
        return {u"服务器的应答无法识别", u"The server's answer could not be understood"};
    case ErrorCode::DownloadStatus:
        return {u"服务器拒绝了请求", u"The server refuses the request"};
    case ErrorCode::CalendarNotFound:
        return {u"这不是日历文件", u"This is not a calendar file"};
    case ErrorCode::CalendarFileUnreadable:
        return {u"无法读取日历文件", u"The calendar file cannot be read"};
    case ErrorCode::DownloadFailed:
        return {u"下载失败", u"The download failed"};
    case ErrorCode::TextEncodingInapplicable:
        return {u"文件不是 UTF-8 编码的文本", u"The file is not text encoded as UTF-8"};
    case ErrorCode::CalendarAccessFailed:
        return {u"无法连接系统日历服务", u"The system's calendar service cannot be reached"};
    case ErrorCode::CalendarWriteFailed:
        return {u"系统日历未能保存更改", u"The system's calendar did not save the change"};
    case ErrorCode::CalendarEventMissing:
        return {u"系统日历中已没有这个日程", u"The event is no longer in the system's calendar"};
    case ErrorCode::LoginItemFailed:
        return {u"系统未接受开机启动设置", u"The system did not accept the launch-at-login setting"};
    case ErrorCode::ArchiveUnreadable:
        return {u"这不是 Tessaly 的导出文件，或者文件已损坏", u"This is not an archive of Tessaly, or it is damaged"};
    case ErrorCode::ArchiveNewer:
        return {u"导出文件来自更新的版本", u"The archive was written by a newer version"};
    case ErrorCode::ArchiveEntryInvalid:
        return {u"导出文件中有一项无法读取", u"A part of the archive cannot be read"};
    case ErrorCode::ArchiveEntryMissing:
        return {u"导出文件中缺少一项", u"A part of the archive is missing"};
    case ErrorCode::ArchiveTooLarge:
        return {u"内容超过 4 GB，无法放进一个导出文件", u"More than 4 GB do not fit into an archive"};
    case ErrorCode::ArchiveSourceUnreadable:
        return {u"有一个文件无法读取", u"A file cannot be read"};
    case ErrorCode::ArchiveUnwritable:
        return {u"无法写入文件", u"The file cannot be written"};
    }
    Q_UNREACHABLE();
}

/// What an HTTP status of 400 and above means to the user.
Words statusWords(int status)
{
    switch (status) {
    case 401:
    case 403:
    case 407:
        return {u"服务器要求登录", u"The server asks for a login"};
    case 404:
    case 410:
        return {u"服务器上已没有此文件", u"The server says the file is gone"};
    case 429:
        return {u"服务器要求稍后再试", u"The server asks to try again later"};
    default:
        return status >= 500 ? Words{u"服务器出错", u"The server has an error"} : words(ErrorCode::DownloadStatus);
    }
}

Words words(const Error &error)
{
    return error.code == ErrorCode::DownloadStatus ? statusWords(error.detail.toInt()) : words(error.code);
}

/// As words(), where there are shorter ones that go on within a sentence.
std::optional<Words> phraseWords(ErrorCode code)
{
    switch (code) {
    case ErrorCode::DownloadNoNetwork:
        return Words{u"没有网络", u"no network"};
    case ErrorCode::DownloadTimedOut:
    case ErrorCode::DownloadConnectionFailed:
        return Words{u"服务器没有回应", u"the server does not answer"};
    case ErrorCode::CalendarNotFound:
        return Words{u"不是日历文件", u"not a calendar file"};
    default:
        return std::nullopt;
    }
}

bool needsTranslation(const QString &detail)
{
    return !detail.startsWith(u'/') &&
           std::any_of(detail.cbegin(), detail.cend(), [](QChar character) { return character.isLetter(); });
}

} // namespace

QString errorText(const Error &error, AppLanguage language)
{
    const Words found = words(error);
    const bool isEnglish = language == AppLanguage::English;
    QString text = QString::fromUtf16(isEnglish ? found.english : found.chinese);
    if (!error.detail.isEmpty() && !needsTranslation(error.detail))
        text += (isEnglish ? QStringLiteral(" (%1)") : QStringLiteral("（%1）")).arg(error.detail);
    return text + (isEnglish ? u'.' : u'。');
}

QString errorPhrase(const Error &error, AppLanguage language)
{
    const Words found = phraseWords(error.code).value_or(words(error));
    QString text = QString::fromUtf16(language == AppLanguage::English ? found.english : found.chinese);
    text[0] = text.at(0).toLower();
    if (error.code == ErrorCode::DownloadStatus)
        text += QStringLiteral(" (%1)").arg(error.detail);
    return text;
}

Message failureMessage(const QString &chinese, const QString &english, const Error &error)
{
    return {{chinese + errorText(error, AppLanguage::Chinese), english + errorText(error, AppLanguage::English)},
            MessageKind::Failure};
}

} // namespace tessaly
