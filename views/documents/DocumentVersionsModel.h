#pragma once

#include "model/LineDifference.h"
#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// A former text in the list.
struct DocumentVersionRow
{
    Instant moment = {};
    QString title = {};

    [[nodiscard]] qint64 key() const { return static_cast<qint64>(moment.seconds * 1000); }
    bool operator==(const DocumentVersionRow &) const = default;
};

/// A line of the comparison, or in place of a longer stretch of equal lines how many they are.
struct ComparedLineRow
{
    int number = 0;
    ComparedLine::Kind kind = {};
    QString text = {};
    bool isFolded = false;

    [[nodiscard]] int key() const { return number; }
    bool operator==(const ComparedLineRow &) const = default;
};

/// The state of the sheet of a document's former texts: which there are, and what restoring one would do to the text.
class DocumentVersionsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store MEMBER m_store NOTIFY changed REQUIRED)
    Q_PROPERTY(QAbstractItemModel *versions READ versions CONSTANT)
    Q_PROPERTY(QAbstractItemModel *lines READ lines CONSTANT)
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool canRestore READ canRestore NOTIFY changed)

public:
    /// The numbers of the role "kind".
    enum LineKind { Same, Removed, Added };
    Q_ENUM(LineKind)

    explicit DocumentVersionsModel(QObject *parent = nullptr);

    /// Roles: title.
    [[nodiscard]] RowListModel<DocumentVersionRow> *versions() { return &m_versions; }
    /// Roles: text, kind, isFolded.
    [[nodiscard]] RowListModel<ComparedLineRow> *lines() { return &m_lines; }
    /// Row of the version that is shown; -1 while there is none.
    [[nodiscard]] int current() const { return m_current; }
    void setCurrent(int row);
    /// What restoring would do, or why nothing can be restored.
    [[nodiscard]] QString summary() const;
    /// The text of the version that is shown.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] bool canRestore() const { return m_added + m_removed > 0; }

    /// Lists the former texts of the document and compares the newest with the present text.
    Q_INVOKABLE void begin(const QString &documentId, const QString &presentText);

signals:
    void changed();

private:
    void compare();

    PlannerStore *m_store = nullptr;
    RowListModel<DocumentVersionRow> m_versions;
    RowListModel<ComparedLineRow> m_lines;
    QUuid m_documentID;
    QString m_presentText;
    QString m_text;
    int m_current = -1;
    qsizetype m_added = 0;
    qsizetype m_removed = 0;
    bool m_hasFailed = false;
};

} // namespace tessaly
