#pragma once

#include "model/LinkHealth.h"
#include "model/Result.h"

#include <QByteArray>
#include <QUrl>

#include <functional>

namespace tessaly {

/// What a server answered.
struct FeedAnswer
{
    /// Of HTTP (RFC 9110, 15). 304: the calendar is still the version that was named in the request.
    int status = 200;
    QByteArray body = {};
    FeedVersion version = {};
};

/// Downloads linked calendars over http and https.
class FeedDownloader
{
public:
    using Completion = std::function<void(Result<FeedAnswer>)>;

    virtual ~FeedDownloader() = default;

    /// Fetches the body with a GET, a conditional one where a version is known. `completion` runs exactly once, later,
    /// on the main thread; never when the downloader was destroyed before. Redirects are followed, but never from https
    /// to http. The status code is not judged: the body of an error page is a body.
    virtual void download(const QUrl &url, const FeedVersion &known, Completion completion) = 0;
};

} // namespace tessaly
