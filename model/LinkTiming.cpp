#include "model/LinkTiming.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr double hour = 3600;
constexpr double shortestRetry = 300;
constexpr double longestRetry = 6 * hour;
constexpr double longestUpdate = 31 * 24 * hour;

double spread(double seconds, const QUuid &feedID)
{
    const double share = (feedID.data1 % 1000) / 1000.0;
    return seconds * (1 + share / 10);
}

} // namespace

double updateDelay(std::optional<double> refreshSeconds, const QUuid &feedID)
{
    return spread(std::clamp(refreshSeconds.value_or(hour), hour, longestUpdate), feedID);
}

double retryDelay(int failures, const QUuid &feedID)
{
    const int doublings = std::clamp(failures - 1, 0, 20);
    return spread(std::min(std::ldexp(shortestRetry, doublings), longestRetry), feedID);
}

bool isDueAfterGap(Instant lastReading, Instant now)
{
    return std::abs(now.seconds - lastReading.seconds) > shortestRetry;
}

} // namespace tessaly
