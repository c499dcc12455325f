#include "tests/system/DocumentUnderTest.h"

#include "tests/support/TestMain.h"
#include "ui/Ui.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QSignalSpy>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// Room for a machine that does other things too.
constexpr int patience = 60'000;

const QByteArray scene = R"(
    import QtQuick
    import Tessaly.DocumentEngine
    import Tessaly.Ui

    Rectangle {
        id: scene

        property alias markdown: preview.markdown
        property alias baseUrl: preview.baseUrl
        property alias isRendering: preview.isRendering
        property var answer
        property list<string> links

        signal answered
        signal rendered

        function front(): Item {
            return Array.from(preview.children).find(child => child.x === 0 && child.hasPage !== undefined);
        }

        function ask(script: string): void {
            front().runJavaScript(script, result => { answer = result; answered(); });
        }

        function setDark(isDark: bool): void {
            Theme.isDark = isDark;
        }

        function setPreviewVisible(isVisible: bool): void {
            preview.visible = isVisible;
        }

        function showEnd(): void {
            preview.showEnd();
        }

        function pageProcess(): int {
            return front().renderProcessPid;
        }

        color: Theme.bg

        MarkdownPreview {
            id: preview

            anchors.fill: parent
            markdown: ""
            onLinkActivated: link => scene.links.push(link.toString())
            onRendered: scene.rendered()
        }
    })";

} // namespace

DocumentUnderTest::DocumentUnderTest()
{
    installImageProviders(*m_view.engine());
    auto *component = new QQmlComponent(m_view.engine(), m_view.engine());
    component->setData(scene, QUrl());
    m_preview = component->create();
    if (!m_preview)
        qFatal("%s", qPrintable(component->errorString()));
    m_view.setContent(QUrl(), component, m_preview);
    m_view.setResizeMode(QQuickView::SizeRootObjectToView);
    m_view.resize(600, 700);
    m_view.show();
}

bool DocumentUnderTest::show(const QString &markdown)
{
    // A real event loop, because the engine runs slowly in one that only looks for events now and then.
    QSignalSpy rendered(m_preview, SIGNAL(rendered()));
    if (isRendering() && !rendered.wait(patience))
        return false;
    rendered.clear();
    type(markdown);
    return !isRendering() || rendered.wait(patience);
}

bool DocumentUnderTest::showAnew(const QString &markdown)
{
    // A document in another folder gets a page of its own.
    m_hasOtherSpelling = !m_hasOtherSpelling;
    QSignalSpy rendered(m_preview, SIGNAL(rendered()));
    if (isRendering() && !rendered.wait(patience))
        return false;
    rendered.clear();
    type(markdown);
    setFolder(m_folder);
    return rendered.wait(patience);
}

void DocumentUnderTest::setFolder(const QString &path)
{
    m_folder = path;
    m_preview->setProperty("baseUrl", QUrl::fromLocalFile(m_hasOtherSpelling ? path + u"/."_s : path));
}

void DocumentUnderTest::setDark(bool isDark)
{
    QMetaObject::invokeMethod(m_preview, "setDark", Q_ARG(bool, isDark));
}

void DocumentUnderTest::setPreviewVisible(bool isVisible)
{
    QMetaObject::invokeMethod(m_preview, "setPreviewVisible", Q_ARG(bool, isVisible));
}

int DocumentUnderTest::pageProcess() const
{
    int process = 0;
    QMetaObject::invokeMethod(m_preview, "pageProcess", Q_RETURN_ARG(int, process));
    return process;
}

void DocumentUnderTest::type(const QString &markdown)
{
    m_preview->setProperty("markdown", markdown);
}

QVariant DocumentUnderTest::ask(const QString &script)
{
    QSignalSpy answered(m_preview, SIGNAL(answered()));
    QMetaObject::invokeMethod(m_preview, "ask", Q_ARG(QString, script));
    if (answered.isEmpty() && !answered.wait(patience))
        return {};
    return m_preview->property("answer");
}

void fixEngineEnvironment()
{
    fixTestEnvironment();
    QQuickStyle::setStyle(QStringLiteral("Basic"));
}

} // namespace tessaly
