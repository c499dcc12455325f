#include "tests/support/TestMain.h"
#include "ui/Ui.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickView>

using namespace Qt::StringLiterals;

namespace {

/// A picture of QML of Tessaly.Ui on white, at the scale that the environment asks for.
QImage pictureOf(const QByteArray &qml)
{
    QQuickView view;
    tessaly::installImageProviders(*view.engine());
    QQmlComponent component(view.engine());
    component.setData("import QtQuick\nimport Tessaly.Ui\nItem { width: 400; height: 400;\n" + qml + "\n}", {});
    auto *item = qobject_cast<QQuickItem *>(component.create());
    if (!item)
        qFatal("%s", qPrintable(component.errorString()));
    view.setContent({}, &component, item);
    view.resize(400, 400);
    view.show();
    (void)QTest::qWaitForWindowExposed(&view);
    return view.grabWindow().convertToFormat(QImage::Format_RGB32);
}

/// The lengths of what is not white down a column of pixels.
QList<int> thicknesses(const QImage &picture, int column)
{
    QList<int> lengths;
    bool isOn = false;
    for (int y = 0; y < picture.height(); ++y) {
        const bool isInk = picture.pixel(column, y) != 0xffffffff;
        if (isInk && !isOn)
            lengths.append(0);
        if (isInk)
            ++lengths.last();
        isOn = isInk;
    }
    return lengths;
}

/// The smallest part of the picture that holds all that is not white.
QImage inkOf(const QImage &picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != 0xffffffff)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return picture.copy(ink);
}

/// Whether the square of ink is round at every corner and whole between them.
bool isRoundedSquare(const QImage &ink)
{
    const int end = ink.width() - 1;
    const auto isPale = [&](int x, int y) { return qGray(ink.pixel(x, y)) > 180; };
    const auto isDark = [&](int x, int y) { return qGray(ink.pixel(x, y)) < 60; };
    bool isWhole = ink.width() == ink.height();
    for (int place = end / 3 + 1; place < end - end / 3; ++place)
        isWhole = isWhole && isDark(place, 0) && isDark(place, end) && isDark(0, place) && isDark(end, place);
    return isWhole && isPale(0, 0) && isPale(end, 0) && isPale(0, end) && isPale(end, end);
}

} // namespace

/// Run at scales between whole numbers.
class PixelSnapTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tessaly::applyInterfaceFont(); }

    void hairlinesAreEquallyThick_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("edges");
        QTest::newRow("lines") << QByteArray("Separator { y: index * 11 + 0.3; width: 100; color: \"black\" }") << 1;
        QTest::newRow("lines in a card that moves itself")
            << QByteArray("Card { y: index * 37 + 0.4; width: 0; height: 9; border.width: 0; color: \"white\"; "
                          "Separator { y: 4; width: 100; color: \"black\" } }")
            << 1;
        QTest::newRow("borders") << QByteArray("Card { y: index * 37; x: 1; width: 99; height: 21; border.color: "
                                               "\"black\" }")
                                 << 2;
        QTest::newRow("fields") << QByteArray("FieldFrame { y: index * 37; width: 99; height: 32 }") << 2;
    }

    void hairlinesAreEquallyThick()
    {
        QFETCH(const QByteArray, line);
        QFETCH(const int, edges);
        const QImage picture =
            pictureOf("Repeater { model: 9; Item { id: it; required property int index; " + line + " } }");

        QVERIFY(picture.width() > 400);
        const QList<int> found = thicknesses(picture, 60);
        QVERIFY2(found.size() >= 9, "there are lines");
        // The upper edge of a border and its lower edge need not be alike, but those of all boxes.
        for (qsizetype place = 0; place < found.size(); ++place)
            QCOMPARE(found.at(place), found.at(place % edges));
    }

    void marksKeepTheirCorners()
    {
        for (const double place : {3.0, 10.0, 11.0, 13.0, 20.3}) {
            const QImage mark = inkOf(
                pictureOf(QStringLiteral("ColorMark { x: %1; y: %1 + 1; color: \"black\" }").arg(place).toUtf8()));
            QVERIFY2(isRoundedSquare(mark), qPrintable(QString::number(place)));
        }
    }
};

TESSALY_TEST_MAIN(PixelSnapTest)
#include "PixelSnapTest.moc"
