#pragma once

#include "model/AppLanguage.h"

#include <algorithm>

namespace tessaly {

/// What a message reports, which decides how long it stays. In the order of their weight.
enum class MessageKind {
    Success,  ///< leaves after a while, can be closed
    Progress, ///< stays until its outcome replaces it
    Notice,   ///< nothing failed, but the user should know: stays until it is closed or replaced
    Failure,  ///< stays until it is closed or replaced
};

/// What the user is told, in both languages, so that the words follow the language for as long as they show.
struct Message
{
    TextPair text = {};
    MessageKind kind = MessageKind::Success;

    [[nodiscard]] bool isEmpty() const { return text.chinese.isEmpty(); }
    bool operator==(const Message &) const = default;
};

/// One message that says what both say, as long as the one of more weight stays.
[[nodiscard]] inline Message joined(const Message &first, const Message &second)
{
    if (first.isEmpty() || second.isEmpty())
        return first.isEmpty() ? second : first;
    return {{first.text.chinese + second.text.chinese, first.text.english + u' ' + second.text.english},
            std::max(first.kind, second.kind)};
}

} // namespace tessaly
