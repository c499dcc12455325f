#pragma once

#include <QLocale>
#include <QObject>
#include <QString>

namespace tessaly {
Q_NAMESPACE

/// The interface language.
enum class AppLanguage { Chinese, English };
Q_ENUM_NS(AppLanguage)

/// The stored form: "zh" or "en".
[[nodiscard]] inline QString rawValue(AppLanguage language)
{
    return language == AppLanguage::English ? QStringLiteral("en") : QStringLiteral("zh");
}

/// The reverse of rawValue(); anything but "en" is Chinese.
[[nodiscard]] inline AppLanguage appLanguageFromRawValue(QStringView raw)
{
    return raw == QLatin1String("en") ? AppLanguage::English : AppLanguage::Chinese;
}

/// The language's own name, as shown in the language picker.
[[nodiscard]] inline QString title(AppLanguage language)
{
    return language == AppLanguage::English ? QStringLiteral("English") : QStringLiteral("中文");
}

/// A text in both languages, for what is shown longer than a language may last.
struct TextPair
{
    QString chinese;
    QString english;

    [[nodiscard]] const QString &in(AppLanguage language) const
    {
        return language == AppLanguage::English ? english : chinese;
    }
    bool operator==(const TextPair &) const = default;
};

/// The locale whose names of months and weekdays go with the interface language.
[[nodiscard]] inline QLocale interfaceLocale(bool isEnglish)
{
    return isEnglish ? QLocale(QLocale::English, QLocale::UnitedStates)
                     : QLocale(QLocale::Chinese, QLocale::SimplifiedHanScript, QLocale::China);
}

} // namespace tessaly
