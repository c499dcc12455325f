#include "views/documents/DocumentDesktop.h"

#include "views/documents/SharedOpenGL.h"

#include <QFileInfo>
#include <QImageReader>
#include <QJSEngine>

namespace tessaly {

DocumentDesktop::DocumentDesktop(FileDialogs &fileDialogs, QObject *parent)
    : QObject(parent), m_fileDialogs(fileDialogs),
      m_previewSource(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Documents/EnginePreview.qml")),
      m_copierSource(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Documents/EngineCopier.qml"))
{
}

DocumentDesktop *DocumentDesktop::create(QQmlEngine *, QJSEngine *)
{
    Q_ASSERT(s_instance);
    QJSEngine::setObjectOwnership(s_instance, QJSEngine::CppOwnership);
    return s_instance;
}

bool DocumentDesktop::canShow(const QUrl &picture)
{
    const QString suffix = QFileInfo(picture.fileName()).suffix().toLower();
    return suffix != u"heic" || QImageReader::supportedImageFormats().contains("heic");
}

void DocumentDesktop::prepareEngine()
{
    ensureSharedOpenGL();
}

QStringList DocumentDesktop::copyOutcome(bool isCopied)
{
    return isCopied ? QStringList{QStringLiteral("已复制公众号富文本；公式已转为图片格式。"),
                                  QStringLiteral("WeChat rich text copied; formulas were converted to images.")}
                    : QStringList{QStringLiteral("格式生成失败，请检查网络后重试。"),
                                  QStringLiteral("Formatting failed. Check your connection and try again.")};
}

void DocumentDesktop::setSources(const QUrl &preview, const QUrl &copier)
{
    m_previewSource = preview;
    m_copierSource = copier;
}

} // namespace tessaly
