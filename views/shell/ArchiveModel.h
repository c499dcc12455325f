#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QUrl>

namespace tessaly {

class FileDialogs;
class PlannerStore;

/// Exports everything to a file that the user chooses, and imports one. Progress and outcome are on the status line.
class ArchiveModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes the one that there is.")

    Q_PROPERTY(QString importCandidate READ importCandidate NOTIFY importCandidateChanged)

public:
    /// Both must outlive the model.
    ArchiveModel(PlannerStore &store, FileDialogs &fileDialogs, QObject *parent = nullptr);

    Q_INVOKABLE void exportArchive();
    /// Lets the user choose the archive that becomes the candidate.
    Q_INVOKABLE void chooseImport();
    /// Name of the file that the user has to be asked about before it replaces everything; empty without one.
    [[nodiscard]] QString importCandidate() const { return m_importCandidate.fileName(); }
    /// Asks the user whether the file shall replace everything.
    void offerImport(const QUrl &file);
    Q_INVOKABLE void confirmImport();
    Q_INVOKABLE void dismissImport();

signals:
    void importCandidateChanged();

private:
    PlannerStore &m_store;
    FileDialogs &m_fileDialogs;
    QUrl m_importCandidate;
};

} // namespace tessaly
