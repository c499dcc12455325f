#pragma once

#include "model/AppLanguage.h"

namespace tessaly {

/// What a message reports, which decides how long it stays.
enum class MessageKind {
    Success,  ///< leaves after a while, can be closed
    Progress, ///< stays until its outcome replaces it
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

} // namespace tessaly
