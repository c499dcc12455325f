#pragma once

#include "platform/FileDialogs.h"

#include <QDBusConnection>
#include <QVariant>

#include <memory>

namespace tessaly {

/// The desktop's own dialogs, shown by the desktop portal (org.freedesktop.portal.FileChooser). Where there is no
/// portal, or it cannot choose folders yet, other dialogs are asked.
class PortalFileDialogs final : public FileDialogs
{
public:
    explicit PortalFileDialogs(std::unique_ptr<FileDialogs> otherwise,
                               QDBusConnection bus = QDBusConnection::sessionBus());
    ~PortalFileDialogs() override;

    void chooseFiles(const FileQuestion &question, std::function<void(QList<QUrl>)> completion) override;
    void chooseSaveFile(const QString &title, const QString &suggestedName,
                        std::function<void(QUrl)> completion) override;
    void chooseFolder(const QString &title, const QUrl &start, std::function<void(QUrl)> completion) override;

private:
    /// Calls `completion` with what was chosen, or `fallback` when the portal does not take the question. `method` is
    /// one of the portal's.
    void ask(const QString &method, const QString &title, const QVariantMap &options,
             std::function<void(QList<QUrl>)> completion, std::function<void()> fallback);

    // Shared with the questions that are open when it goes.
    std::shared_ptr<FileDialogs> m_otherwise;
    QDBusConnection m_bus;
};

} // namespace tessaly
