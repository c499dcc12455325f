#pragma once

#include "platform/FileDialogs.h"

#include <utility>

namespace tessaly {

/// Answers every question at once with what was prepared, unless answers are kept back.
class FakeFileDialogs final : public FileDialogs
{
public:
    void chooseFiles(const FileQuestion &question, std::function<void(QList<QUrl>)> completion) override
    {
        m_questions.append(QStringLiteral("%1 (%2)%3")
                               .arg(question.title, question.extensions.join(QStringLiteral(", ")),
                                    question.allowsSeveral ? QStringLiteral(", several") : QString()));
        answer([this, completion = std::move(completion)] { completion(m_files); });
    }
    void chooseSaveFile(const QString &title, const QString &suggestedName,
                        std::function<void(QUrl)> completion) override
    {
        m_questions.append(QStringLiteral("%1 as %2").arg(title, suggestedName));
        answer([this, completion = std::move(completion)] { completion(m_files.value(0)); });
    }
    void chooseFolder(const QString &title, const QUrl &start, std::function<void(QUrl)> completion) override
    {
        m_questions.append(QStringLiteral("%1 in %2").arg(title, start.toString()));
        answer([this, completion = std::move(completion)] { completion(m_folder); });
    }

    void answerFilesWith(const QList<QUrl> &files) { m_files = files; }
    void answerFolderWith(const QUrl &folder) { m_folder = folder; }
    /// Questions wait for giveAnswers().
    void keepAnswersBack() { m_isWaiting = true; }
    void giveAnswers()
    {
        m_isWaiting = false;
        for (const std::function<void()> &give : std::exchange(m_waiting, {}))
            give();
    }
    /// Each as "title (extensions)", with ", several" where allowed, or "title in folder".
    [[nodiscard]] const QStringList &questions() const { return m_questions; }

private:
    void answer(std::function<void()> give)
    {
        if (m_isWaiting)
            m_waiting.append(std::move(give));
        else
            give();
    }

    QList<QUrl> m_files;
    QUrl m_folder;
    QStringList m_questions;
    QList<std::function<void()>> m_waiting;
    bool m_isWaiting = false;
};

} // namespace tessaly
