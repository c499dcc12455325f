#pragma once

#include "model/Result.h"

#include <QByteArray>
#include <QUrl>

#include <functional>

namespace tessaly {

/// Downloads linked calendars over http and https.
class FeedDownloader
{
public:
    using Completion = std::function<void(Result<QByteArray>)>;

    virtual ~FeedDownloader() = default;

    /// Fetches the body with a plain GET. `completion` runs exactly once, later, on the main thread; never when the
    /// downloader was destroyed before. Redirects are followed, but never from https to http. The status code is not
    /// judged: the body of an error page is a body.
    virtual void download(const QUrl &url, Completion completion) = 0;
};

} // namespace tessaly
