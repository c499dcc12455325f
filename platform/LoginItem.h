#pragma once

#include "model/Result.h"

namespace tessaly {

/// Whether the program starts when the user logs in.
class LoginItem
{
public:
    virtual ~LoginItem() = default;

    /// What the system does, read again at each call.
    [[nodiscard]] virtual bool isEnabled() const = 0;
    [[nodiscard]] virtual Result<void> setEnabled(bool isEnabled) = 0;
};

} // namespace tessaly
