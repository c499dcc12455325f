#pragma once

#include "platform/FileDialogs.h"

namespace tessaly {

/// Answers every question at once with what was prepared.
class FakeFileDialogs final : public FileDialogs
{
public:
    void chooseFiles(const FileQuestion &, std::function<void(QList<QUrl>)> completion) override
    {
        completion(m_files);
    }
    void chooseFolder(const QString &, const QUrl &, std::function<void(QUrl)> completion) override
    {
        completion(m_folder);
    }

    void answerFilesWith(const QList<QUrl> &files) { m_files = files; }
    void answerFolderWith(const QUrl &folder) { m_folder = folder; }

private:
    QList<QUrl> m_files;
    QUrl m_folder;
};

} // namespace tessaly
