#pragma once

#include "model/AppLanguage.h"
#include "model/Result.h"
#include "store/Message.h"

namespace tessaly {

/// The failure in words of the interface language: one sentence, with the path or number it is about, if any, in
/// brackets.
[[nodiscard]] QString errorText(const Error &error, AppLanguage language);

/// Why a link cannot be read, in words that go on within a sentence.
[[nodiscard]] QString errorPhrase(const Error &error, AppLanguage language);

/// What failed, followed by why.
[[nodiscard]] Message failureMessage(const QString &chinese, const QString &english, const Error &error);

} // namespace tessaly
