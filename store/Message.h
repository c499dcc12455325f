#pragma once

#include "model/AppLanguage.h"

#include <algorithm>

namespace tessaly {

/// What a message reports, which decides how long it stays. The more important kind is the later one.
enum class MessageKind {
    Success,  ///< disappears after a while, can be closed
    Progress, ///< stays until its outcome replaces it
    Notice,   ///< nothing failed, but the user should know; stays until closed or replaced
    Failure,  ///< stays until closed or replaced
};

/// A message to the user in both languages, so that it follows the interface language while it is shown.
struct Message
{
    TextPair text = {};
    MessageKind kind = MessageKind::Success;

    [[nodiscard]] bool isEmpty() const { return text.chinese.isEmpty(); }
    bool operator==(const Message &) const = default;
};

/// One message with both texts and the more important kind.
[[nodiscard]] inline Message joined(const Message &first, const Message &second)
{
    if (first.isEmpty() || second.isEmpty())
        return first.isEmpty() ? second : first;
    return {{first.text.chinese + second.text.chinese, first.text.english + u' ' + second.text.english},
            std::max(first.kind, second.kind)};
}

} // namespace tessaly
