#include "platform/quick/QuickFileDialogs.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStandardPaths>
#include <QTimer>

#include <utility>

namespace tessaly {

namespace {

// Where Qt has to draw a dialog itself and the second module is missing, it crashes; so that one is asked for as well.
constexpr char imports[] = "import QtQuick.Dialogs\nimport Qt.labs.folderlistmodel\n";
constexpr char fileDialog[] = "FileDialog {}";
constexpr char severalFilesDialog[] = "FileDialog { fileMode: FileDialog.OpenFiles }";
constexpr char saveFileDialog[] = "FileDialog { fileMode: FileDialog.SaveFile }";
constexpr char folderDialog[] = "FolderDialog {}";

/// Qt's own dialog leaves the ground of its path white, whatever the palette; the path itself follows it.
void paintPath(const QQuickItem &root)
{
    for (QQuickItem *item : root.childItems()) {
        if (item->inherits("QQuickFolderBreadcrumbBar")) {
            const auto *palette = item->property("palette").value<QObject *>();
            auto *ground = item->property("background").value<QObject *>();
            if (palette && ground)
                ground->setProperty("color", palette->property("base"));
        } else {
            paintPath(*item);
        }
    }
}

/// One dialog, which shows as soon as it is made, and its answer. It deletes itself.
class Question : public QObject
{
    Q_OBJECT

public:
    using Answer = std::function<void(QObject *dialog)>;

    /// `answer` gets the dialog, or null when the user cancelled or no dialog can be shown.
    static void ask(const char *qml, const QVariantMap &properties, Answer answer)
    {
        auto *question = new Question(std::move(answer));
        if (!question->open(qml, properties))
            QTimer::singleShot(0, question, &Question::reject);
    }

private slots:
    void accept() { finish(m_dialog.get()); }
    void reject() { finish(nullptr); }

private:
    explicit Question(Answer answer) : m_answer(std::move(answer)) {}

    bool open(const char *qml, QVariantMap properties)
    {
        QWindow *window = QGuiApplication::focusWindow();
        if (!window) {
            const QWindowList windows = QGuiApplication::topLevelWindows();
            window = windows.isEmpty() ? nullptr : windows.first();
        }
        QQmlEngine *engine = window ? qmlEngine(window) : nullptr;
        if (!engine)
            return false;
        QQmlComponent component(engine);
        component.setData(QByteArray(imports) + qml, QUrl());
        properties.insert(QStringLiteral("parentWindow"), QVariant::fromValue(window));
        properties.insert(QStringLiteral("modality"), Qt::WindowModal);
        m_dialog.reset(component.createWithInitialProperties(properties));
        if (!m_dialog) {
            qWarning("No file dialog can be shown: %s", qUtf8Printable(component.errorString()));
            return false;
        }
        connect(m_dialog.get(), SIGNAL(accepted()), this, SLOT(accept()));
        connect(m_dialog.get(), SIGNAL(rejected()), this, SLOT(reject()));
        if (!QMetaObject::invokeMethod(m_dialog.get(), "open"))
            return false;
        if (const auto *quickWindow = qobject_cast<QQuickWindow *>(window))
            paintPath(*quickWindow->contentItem());
        return true;
    }

    void finish(QObject *dialog)
    {
        if (!m_answer)
            return;
        std::exchange(m_answer, {})(dialog);
        // The dialog is in the middle of its own signal.
        if (m_dialog)
            m_dialog.release()->deleteLater();
        deleteLater();
    }

    Answer m_answer;
    std::unique_ptr<QObject> m_dialog;
};

} // namespace

void QuickFileDialogs::chooseFiles(const FileQuestion &question, std::function<void(QList<QUrl>)> completion)
{
    QStringList patterns;
    for (const QString &extension : question.extensions)
        patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
    const QString filter = QStringLiteral("%1 (%2)").arg(question.title, patterns.join(u' '));
    Question::ask(question.allowsSeveral ? severalFilesDialog : fileDialog,
                  {{QStringLiteral("title"), question.title}, {QStringLiteral("nameFilters"), QStringList{filter}}},
                  [completion = std::move(completion)](QObject *dialog) {
                      completion(dialog ? dialog->property("selectedFiles").value<QList<QUrl>>() : QList<QUrl>());
                  });
}

void QuickFileDialogs::chooseSaveFile(const QString &title, const QString &suggestedName,
                                      std::function<void(QUrl)> completion)
{
    const QString home = QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
    Question::ask(saveFileDialog,
                  {{QStringLiteral("title"), title},
                   {QStringLiteral("selectedFile"), QUrl::fromLocalFile(home + u'/' + suggestedName)},
                   {QStringLiteral("defaultSuffix"), QFileInfo(suggestedName).suffix()}},
                  [completion = std::move(completion)](QObject *dialog) {
                      completion(dialog ? dialog->property("selectedFile").toUrl() : QUrl());
                  });
}

void QuickFileDialogs::chooseFolder(const QString &title, const QUrl &start, std::function<void(QUrl)> completion)
{
    Question::ask(folderDialog, {{QStringLiteral("title"), title}, {QStringLiteral("currentFolder"), start}},
                  [completion = std::move(completion)](QObject *dialog) {
                      completion(dialog ? dialog->property("selectedFolder").toUrl() : QUrl());
                  });
}

} // namespace tessaly

#include "QuickFileDialogs.moc"
