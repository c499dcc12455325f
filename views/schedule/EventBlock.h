#pragma once

#include "views/schedule/BlockPicture.h"
#include "views/schedule/BlockStyle.h"

#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// A schedule in the week: a tint of its colour, a strip of the full colour, title and time as far as there is room. A
/// button, one object and one picture, because there are hundreds of them in a full week.
class EventBlock : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int index MEMBER m_index NOTIFY indexChanged REQUIRED)
    Q_PROPERTY(tessaly::BlockStyle *style READ style WRITE setStyle NOTIFY styleChanged REQUIRED)
    /// Where it is; nowhere when empty.
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged REQUIRED)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY textChanged REQUIRED)
    Q_PROPERTY(QString timeShown READ timeShown WRITE setTimeShown NOTIFY textChanged REQUIRED)
    /// All there is to tell, and whether some of that has no place in the block.
    Q_PROPERTY(QString explanation MEMBER m_explanation NOTIFY textChanged REQUIRED)
    Q_PROPERTY(bool hidesDetail MEMBER m_hidesDetail NOTIFY textChanged REQUIRED)
    Q_PROPERTY(QString colorKey MEMBER m_colorKey NOTIFY colorKeyChanged REQUIRED)
    /// Full colour of the schedule.
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(bool isSelected READ isSelected WRITE setSelected NOTIFY isSelectedChanged REQUIRED)
    Q_PROPERTY(QString spokenName MEMBER m_spokenName NOTIFY spokenNameChanged REQUIRED)
    /// How much it shows that it is new, 0 to 1.
    Q_PROPERTY(double flash READ flash WRITE setFlash NOTIFY flashChanged)
    /// Whether it has the focus by a key.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged)
    /// Whether it is pointed at or has such a focus, and does not show all.
    Q_PROPERTY(bool isExplained READ isExplained NOTIFY isExplainedChanged)

public:
    explicit EventBlock(QQuickItem *parent = nullptr);

    [[nodiscard]] BlockStyle *style() const { return m_style; }
    void setStyle(BlockStyle *style);
    [[nodiscard]] QRectF frame() const { return m_frame; }
    void setFrame(const QRectF &frame);
    [[nodiscard]] const QString &title() const { return m_look.title; }
    void setTitle(const QString &title);
    [[nodiscard]] const QString &timeShown() const { return m_look.time; }
    void setTimeShown(const QString &time);
    [[nodiscard]] const QColor &color() const { return m_look.colors.strip; }
    void setColor(const QColor &color);
    [[nodiscard]] bool isSelected() const { return m_look.colors.isSelected; }
    void setSelected(bool isSelected);
    [[nodiscard]] double flash() const { return m_flash; }
    void setFlash(double flash);
    [[nodiscard]] bool hasVisualFocus() const { return m_hasVisualFocus; }
    [[nodiscard]] bool isExplained() const { return m_isExplained; }

signals:
    void indexChanged();
    void styleChanged();
    void frameChanged();
    void textChanged();
    void colorKeyChanged();
    void colorChanged();
    void isSelectedChanged();
    void spokenNameChanged();
    void flashChanged();
    void visualFocusChanged();
    void isExplainedChanged();
    void clicked();

protected:
    void geometryChange(const QRectF &geometry, const QRectF &former) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void touchEvent(QTouchEvent *event) override;
    void touchUngrabEvent() override;

private:
    void press();
    void setDown(bool isDown);
    void setHovered(bool isHovered);
    void setFocusReason(Qt::FocusReason reason);
    void explain();
    [[nodiscard]] bool hidesText() const;
    [[nodiscard]] BlockLook look() const;

    /// Texts, full colour and whether it is selected; the rest is the style's.
    BlockLook m_look;
    BlockStyle *m_style = nullptr;
    QRectF m_frame;
    QString m_explanation;
    QString m_colorKey;
    QString m_spokenName;
    double m_flash = 0;
    int m_index = -1;
    bool m_hidesDetail = false;
    bool m_isDown = false;
    bool m_isHovered = false;
    bool m_isSecondPress = false;
    Qt::FocusReason m_focusReason = Qt::OtherFocusReason;
    bool m_hasVisualFocus = false;
    bool m_isExplained = false;
};

} // namespace tessaly
