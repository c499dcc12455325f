#include "bench/Bench.h"
#include "store/PlannerStoreQml.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/FakeFileDialogs.h"
#include "ui/Ui.h"
#include "views/documents/DocumentDesktop.h"

#include "model/Uuid.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <ctime>
#include <memory>
#include <tuple>
#include <vector>

namespace tessaly {
namespace {

constexpr char pageQml[] = R"(
import QtQuick
import Tessaly.Documents

Item {
    property alias host: editor

    width: 1180
    height: 800

    MarkdownEditorHost {
        id: editor
    }
}
)";

/// The editor in a window, on a document of so many bytes. Pages are left out.
class Editor
{
public:
    explicit Editor(qsizetype size)
    {
        QByteArray text;
        for (int line = 0; text.size() < size; ++line)
            text += line % 5 == 4 ? QByteArray("\n")
                                  : QByteArray("A line of **Markdown** with some words, as people write them down. ") +
                                        QByteArray::number(line) + '\n';
        m_planner.startInEnglish();
        const MarkdownDocument document = *m_planner.library().addDocument(QStringLiteral("Long"), {});
        m_planner.files.write(QStringLiteral("/documents/") + uuidText(document.id) + QStringLiteral(".md"), text);
        PlannerStoreQml::setStore(m_planner.store.get());
        DocumentDesktop::setInstance(&m_desktop);
        m_desktop.setSources({}, {});
        m_view = std::make_unique<QQuickView>();
        installImageProviders(*m_view->engine());
        QQmlComponent component(m_view->engine());
        component.setData(pageQml, QUrl());
        QObject *root = component.create();
        if (!root)
            qFatal("%s", qPrintable(component.errorString()));
        m_view->setContent({}, &component, root);
        m_view->show();
        (void)QTest::qWaitForWindowExposed(m_view.get());
        m_host = root->property("host").value<QObject *>();
        m_id = uuidText(document.id);
    }

    void open()
    {
        m_host->setProperty("documentId", m_id);
        render();
    }
    void close()
    {
        m_host->setProperty("documentId", QString());
        render();
    }
    /// A key, and the frame that shows what it does.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_view.get(), key, modifiers);
        render();
    }
    /// Of a key and its frame; the median of some, each after a pause in which what waits for one is done.
    double processorSeconds(Qt::Key key)
    {
        constexpr int samples = 15;
        std::vector<double> times;
        for (int sample = 0; sample < samples; ++sample) {
            QTest::qWait(350); // lint-allow(sleep): drafts and previews are made in pauses
            const std::clock_t start = std::clock();
            press(key);
            times.push_back(double(std::clock() - start) / CLOCKS_PER_SEC);
        }
        std::nth_element(times.begin(), times.begin() + samples / 2, times.end());
        return times[samples / 2];
    }

private:
    void render()
    {
        QSignalSpy swapped(m_view.get(), &QQuickWindow::frameSwapped);
        m_view->update();
        (void)swapped.wait();
    }

    StoreUnderTest m_planner;
    FakeFileDialogs m_dialogs;
    DocumentDesktop m_desktop{m_dialogs};
    std::unique_ptr<QQuickView> m_view;
    QObject *m_host = nullptr;
    QString m_id;
};

} // namespace

TESSALY_BENCH(editor)
{
    const QString frame = QStringLiteral("one frame");
    constexpr double oneFrame = 1.0 / 60;
    for (const auto &[size, name, frames] :
         {std::tuple(10'000, "10 KB", 1), std::tuple(250'000, "250 KB", 1), std::tuple(1'000'000, "1 MB", 2)}) {
        Editor editor(size);
        const auto opening = bench::medianSeconds(3, {{[&] { editor.open(); }, [&] { editor.close(); }}});
        const double atStart = editor.processorSeconds(Qt::Key_X);
        editor.press(Qt::Key_End, Qt::ControlModifier);
        const double atEnd = editor.processorSeconds(Qt::Key_X);
        const double lineEnds = editor.processorSeconds(Qt::Key_Return);
        const QString of = QStringLiteral(", %1").arg(QLatin1String(name));
        report.shown(QStringLiteral("open a document") + of, opening[0], frame, oneFrame);
        report.atMostTimes(QStringLiteral("key at the start, processor time") + of, atStart, frame, oneFrame, frames);
        report.atMostTimes(QStringLiteral("key at the end") + of, atEnd, frame, oneFrame, frames);
        report.atMostTimes(QStringLiteral("line end at the end") + of, lineEnds, frame, oneFrame, frames);
    }
}

} // namespace tessaly
