#include "views/shell/ArchiveModel.h"

#include "platform/FileDialogs.h"
#include "store/PlannerStore.h"

#include <QFileInfo>
#include <QPointer>

namespace tessaly {

namespace {

const QString suffix = QStringLiteral("zip");

/// Puts the outcome of an export or import on the status line.
Archives::Completion reportTo(PlannerStore &store, const TextPair &success, const TextPair &failure)
{
    return [store = QPointer(&store), success, failure](const Result<void> &result) {
        if (!store)
            return;
        if (result)
            store->setCalendarSyncMessage({success});
        else
            store->reportFailure(failure.chinese, failure.english, result.error());
    };
}

} // namespace

ArchiveModel::ArchiveModel(PlannerStore &store, FileDialogs &fileDialogs, QObject *parent)
    : QObject(parent), m_store(store), m_fileDialogs(fileDialogs)
{
}

void ArchiveModel::exportArchive()
{
    const QString title = m_store.text(QStringLiteral("导出全部内容"), QStringLiteral("Export everything"));
    const QString name = QStringLiteral("Tessaly %1.%2").arg(m_store.today().toString(Qt::ISODate), suffix);
    m_fileDialogs.chooseSaveFile(title, name, [self = QPointer(this)](const QUrl &file) {
        if (!self || !file.isLocalFile())
            return;
        QString path = file.toLocalFile();
        if (QFileInfo(path).suffix().isEmpty())
            path += u'.' + suffix;
        self->m_store.setCalendarSyncMessage(
            {{QStringLiteral("正在导出…"), QStringLiteral("Exporting…")}, MessageKind::Progress});
        self->m_store.archive().write(
            path, reportTo(self->m_store,
                           {QStringLiteral("已导出到 %1。").arg(path), QStringLiteral("Exported to %1.").arg(path)},
                           {QStringLiteral("无法导出："), QStringLiteral("Could not export: ")}));
    });
}

void ArchiveModel::chooseImport()
{
    const FileDialogs::FileQuestion question{
        .title = m_store.text(QStringLiteral("导入导出文件"), QStringLiteral("Import an archive")),
        .extensions = {suffix}};
    m_fileDialogs.chooseFiles(question, [self = QPointer(this)](const QList<QUrl> &files) {
        if (self && !files.isEmpty())
            self->offerImport(files.constFirst());
    });
}

void ArchiveModel::confirmImport()
{
    const QString path = m_importCandidate.toLocalFile();
    dismissImport();
    m_store.setCalendarSyncMessage(
        {{QStringLiteral("正在导入…"), QStringLiteral("Importing…")}, MessageKind::Progress});
    m_store.archive().read(
        path, reportTo(m_store, {QStringLiteral("已导入 %1。").arg(path), QStringLiteral("Imported %1.").arg(path)},
                       {QStringLiteral("无法导入，内容没有改动："),
                        QStringLiteral("Could not import; nothing was changed: ")}));
}

void ArchiveModel::dismissImport()
{
    offerImport({});
}

void ArchiveModel::offerImport(const QUrl &file)
{
    m_importCandidate = file;
    emit importCandidateChanged();
}

} // namespace tessaly
