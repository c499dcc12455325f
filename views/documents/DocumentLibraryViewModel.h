#pragma once

#include "store/PlannerStore.h"
#include "views/documents/DocumentDesktop.h"
#include "views/documents/DocumentRows.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <optional>

namespace tessaly {

/// The state of the documents screen: the two forms and the groups. Created each time the screen opens.
class DocumentLibraryViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(tessaly::DocumentDesktop *desktop MEMBER m_desktop NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString saveLocation READ saveLocation NOTIFY saveLocationChanged)
    Q_PROPERTY(QString saveLocationMessage READ saveLocationMessage NOTIFY saveLocationMessageChanged)
    Q_PROPERTY(QString categoryName MEMBER m_categoryName NOTIFY formChanged)
    Q_PROPERTY(QString documentTitle MEMBER m_documentTitle NOTIFY formChanged)
    Q_PROPERTY(QStringList categories READ categories NOTIFY categoriesChanged)
    Q_PROPERTY(int selectedCategory READ selectedCategory WRITE setSelectedCategory NOTIFY selectedCategoryChanged)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)

public:
    explicit DocumentLibraryViewModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model.
    void setStore(PlannerStore *store);

    /// Path of the folder that holds the documents.
    [[nodiscard]] QString saveLocation() const;
    /// Why the folder chosen last was refused, or did not get all files; empty when all went well.
    [[nodiscard]] QString saveLocationMessage() const;
    /// Entries of the choice of a category; the first is that of none.
    [[nodiscard]] const QStringList &categories() const { return m_categories; }
    /// The entry into which new and imported documents go.
    [[nodiscard]] int selectedCategory() const;
    void setSelectedCategory(int entry);
    /// See DocumentListRow.
    [[nodiscard]] DocumentListRows *rows() { return &m_rows; }

    /// Adds the form's category and empties the field; a blank name only empties it.
    Q_INVOKABLE void addCategory();
    /// Adds the form's document, empties the field and opens the document; a blank title does nothing.
    Q_INVOKABLE void addDocument();
    /// Lets the user choose Markdown files, adds them and opens the last.
    Q_INVOKABLE void importMarkdown();
    /// Lets the user choose the folder for the documents.
    Q_INVOKABLE void chooseSaveLocation();

    /// Opens the group above the document; its row, or -1 for an unknown one.
    Q_INVOKABLE int reveal(const QString &documentId);

    // Of a row of the list.
    /// Opens or closes a header's group.
    Q_INVOKABLE void setExpanded(int row, bool isExpanded);
    /// Begins or ends the editing of a category's name. Only one is edited at a time.
    Q_INVOKABLE void setEditing(int row, bool isEditing);
    /// Takes the name as it is typed.
    Q_INVOKABLE void renameCategory(int row, const QString &name);
    Q_INVOKABLE void openDocument(int row);
    /// Deletes the document or the category without asking.
    Q_INVOKABLE void remove(int row);
    /// The id of a row's document, as text.
    Q_INVOKABLE QString documentId(int row) const;
    /// Brings a deleted document back.
    Q_INVOKABLE void restore(int row);
    /// Removes a deleted document, or all of them, for good.
    Q_INVOKABLE void destroy(const QString &documentId);
    Q_INVOKABLE void destroyAll();
    /// The row whose Delete gets the focus when the row has been removed; else a header; `kind` is what was removed.
    Q_INVOKABLE int rowToFocusAfterRemoval(int row, tessaly::DocumentRow::Kind kind) const;

signals:
    void storeChanged();
    void formChanged();
    void saveLocationChanged();
    void saveLocationMessageChanged();
    void categoriesChanged();
    void selectedCategoryChanged();
    /// The document is to be opened in the editor.
    void editRequested(const QString &documentId);
    /// The category just added, or the document or category that has come back, is shown in this row.
    void added(int row);

private:
    [[nodiscard]] DocumentLibrary &library() const { return m_store->documentLibrary(); }
    /// The row, or one of no group and no document.
    [[nodiscard]] DocumentListRow rowAt(int row) const;
    void setSaveLocation(const QUrl &folder);
    void onCategoriesChanged();
    [[nodiscard]] QList<DocumentListRow> deletedRows() const;
    void showChanged(const StateChange &change);
    void refreshRows();
    void edit(const std::optional<MarkdownDocument> &document);

    PlannerStore *m_store = nullptr;
    DocumentDesktop *m_desktop = nullptr;
    DocumentListRows m_rows;
    QStringList m_categories;
    QString m_categoryName;
    QString m_documentTitle;
    std::optional<QUuid> m_selectedCategoryID;
    DocumentGroupStates m_groups;
    DocumentsMove m_lastMove = DocumentsMove::Done;
    /// The folder that the message is about.
    QString m_lastMoveFolder;
};

} // namespace tessaly
