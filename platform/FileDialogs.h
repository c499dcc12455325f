#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>

namespace tessaly {

/// The desktop's own dialogs for choosing files and folders. Completions run later, on the main thread, with an empty
/// answer when the user cancelled.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    struct FileQuestion
    {
        QString title = {};
        /// Extensions without the point, such as "md".
        QStringList extensions = {};
        bool allowsSeveral = false;
    };

    virtual void chooseFiles(const FileQuestion &question, std::function<void(QList<QUrl>)> completion) = 0;
    /// Asks for the name of a file to write; the dialog itself asks before another file is replaced.
    virtual void chooseSaveFile(const QString &title, const QString &suggestedName,
                                std::function<void(QUrl)> completion) = 0;
    virtual void chooseFolder(const QString &title, const QUrl &start, std::function<void(QUrl)> completion) = 0;
};

} // namespace tessaly
