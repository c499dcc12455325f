#pragma once

#include "platform/FileDialogs.h"

class QObject;
class QVariant;

namespace tessaly {

/// The dialogs of Qt Quick, over the window that has the focus: the platform's own where Qt's platform theme has some,
/// else drawn by Qt. Their module is loaded with the first question; where it is missing, every answer is empty.
class QuickFileDialogs final : public FileDialogs
{
public:
    void chooseFiles(const FileQuestion &question, std::function<void(QList<QUrl>)> completion) override;
    void chooseSaveFile(const QString &title, const QString &suggestedName,
                        std::function<void(QUrl)> completion) override;
    void chooseFolder(const QString &title, const QUrl &start, std::function<void(QUrl)> completion) override;
};

} // namespace tessaly
