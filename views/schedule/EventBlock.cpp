#include "views/schedule/EventBlock.h"

#include <QFontMetricsF>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace tessaly {

namespace {

constexpr double restTint = 0.16;
constexpr double selectedTint = 0.36;
constexpr double hoverTint = 0.04;
constexpr double downTint = 0.08;

/// `color` over the opaque `ground`.
QColor over(const QColor &ground, const QColor &color, double opacity)
{
    const auto mix = [opacity](float below, float above) {
        return static_cast<float>(opacity) * above + static_cast<float>(1 - opacity) * below;
    };
    return QColor::fromRgbF(mix(ground.redF(), color.redF()), mix(ground.greenF(), color.greenF()),
                            mix(ground.blueF(), color.blueF()));
}

bool isByKey(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

} // namespace

EventBlock::EventBlock(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptTouchEvents(true);
    setAcceptHoverEvents(true);
}

void EventBlock::setStyle(BlockStyle *style)
{
    if (m_style == style)
        return;
    if (m_style)
        m_style->disconnect(this);
    m_style = style;
    if (m_style)
        connect(m_style, &BlockStyle::changed, this, &QQuickItem::update);
    emit styleChanged();
    update();
}

void EventBlock::setFrame(const QRectF &frame)
{
    if (m_frame == frame)
        return;
    m_frame = frame;
    setPosition(frame.topLeft());
    setSize(frame.size());
    setVisible(frame.width() > 0);
    emit frameChanged();
}

void EventBlock::setTitle(const QString &title)
{
    if (m_look.title == title)
        return;
    m_look.title = title;
    emit textChanged();
    update();
}

void EventBlock::setTimeShown(const QString &time)
{
    if (m_look.time == time)
        return;
    m_look.time = time;
    emit textChanged();
    update();
}

void EventBlock::setColor(const QColor &color)
{
    if (m_look.colors.strip == color)
        return;
    m_look.colors.strip = color;
    emit colorChanged();
    update();
}

void EventBlock::setSelected(bool isSelected)
{
    if (m_look.colors.isSelected == isSelected)
        return;
    m_look.colors.isSelected = isSelected;
    emit isSelectedChanged();
    update();
}

void EventBlock::setFlash(double flash)
{
    if (m_flash == flash)
        return;
    m_flash = flash;
    emit flashChanged();
    update();
}

void EventBlock::geometryChange(const QRectF &geometry, const QRectF &former)
{
    QQuickItem::geometryChange(geometry, former);
    // Where the display's scale is not a whole number, the picture's size varies with its place.
    const bool isAnywhereSame =
        window() && std::floor(window()->effectiveDevicePixelRatio()) == window()->effectiveDevicePixelRatio();
    if (geometry.size() != former.size() || !isAnywhereSame)
        update();
}

void EventBlock::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        update();
}

QSGNode *EventBlock::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (size().isEmpty() || !m_style) {
        delete node;
        return nullptr;
    }
    auto *image = static_cast<QSGImageNode *>(node);
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
    }
    // The edges lie between device pixels, if the item in which the blocks are does.
    const double ratio = window()->effectiveDevicePixelRatio();
    const auto onPixel = [ratio](double place) { return static_cast<int>(std::lround(place * ratio)); };
    const QRect box(QPoint(onPixel(x()), onPixel(y())),
                    QPoint(onPixel(x() + width()), onPixel(y() + height())) - QPoint(1, 1));
    const QImage picture = blockPicture(look(), box.size(), ratio);
    const int margin = blockMargin(ratio);
    image->setTexture(window()->createTextureFromImage(picture, QQuickWindow::TextureCanUseAtlas));
    image->setSourceRect(QRectF({0, 0}, QSizeF(picture.size())));
    image->setRect(
        QRectF(QPointF(box.topLeft() - QPoint(margin, margin)) / ratio - position(), QSizeF(picture.size()) / ratio));
    return image;
}

BlockLook EventBlock::look() const
{
    BlockLook look = m_look;
    const bool isSelected = look.colors.isSelected;
    QColor fill = over(m_style->ground, look.colors.strip, isSelected ? selectedTint : restTint);
    if (m_isDown || m_isHovered)
        fill = over(fill, m_style->ink, m_isDown ? downTint : hoverTint);
    look.colors.fill = m_flash > 0 ? over(fill, m_style->flash, m_flash) : fill;
    look.colors.edge = m_style->ground;
    look.colors.radius = m_style->radius;
    look.titleFont = m_style->titleFont;
    look.timeFont = m_style->timeFont;
    look.titleInk = isSelected ? m_style->selectedInk : m_style->ink;
    look.timeInk = isSelected ? m_style->selectedInk : m_style->quietInk;
    return look;
}

bool EventBlock::hidesText() const
{
    if (m_hidesDetail || !m_style)
        return m_hidesDetail;
    const double width = blockTextWidth(this->width());
    return QFontMetricsF(m_style->titleFont).horizontalAdvance(m_look.title) > width ||
           QFontMetricsF(m_style->timeFont).horizontalAdvance(m_look.time) > width;
}

void EventBlock::explain()
{
    const bool isExplained = (m_isHovered || m_hasVisualFocus) && hidesText();
    if (m_isExplained == isExplained)
        return;
    m_isExplained = isExplained;
    emit isExplainedChanged();
}

void EventBlock::setFocusReason(Qt::FocusReason reason)
{
    m_focusReason = reason;
    const bool hasVisualFocus = hasActiveFocus() && isByKey(reason);
    if (m_hasVisualFocus == hasVisualFocus)
        return;
    m_hasVisualFocus = hasVisualFocus;
    emit visualFocusChanged();
    explain();
}

void EventBlock::focusInEvent(QFocusEvent *event)
{
    // Tells assistive technology.
    QQuickItem::focusInEvent(event);
    setFocusReason(event->reason());
}

void EventBlock::focusOutEvent(QFocusEvent *event)
{
    setDown(false);
    setFocusReason(event->reason());
}

void EventBlock::setHovered(bool isHovered)
{
    if (m_isHovered == isHovered)
        return;
    m_isHovered = isHovered;
    update();
    explain();
}

void EventBlock::hoverEnterEvent(QHoverEvent *event)
{
    setHovered(true);
    event->ignore();
}

void EventBlock::hoverLeaveEvent(QHoverEvent *event)
{
    setHovered(false);
    event->ignore();
}

void EventBlock::setDown(bool isDown)
{
    if (m_isDown == isDown)
        return;
    m_isDown = isDown;
    update();
}

void EventBlock::press()
{
    m_isSecondPress = false;
    setDown(true);
    forceActiveFocus(Qt::MouseFocusReason);
    // A key may have given it the focus before.
    setFocusReason(Qt::MouseFocusReason);
}

void EventBlock::mousePressEvent(QMouseEvent *event)
{
    press();
    event->accept();
}

void EventBlock::mouseMoveEvent(QMouseEvent *event)
{
    setDown(contains(event->position()));
}

void EventBlock::mouseReleaseEvent(QMouseEvent *)
{
    const bool isClick = m_isDown && !m_isSecondPress;
    setDown(false);
    if (isClick)
        emit clicked();
}

void EventBlock::mouseDoubleClickEvent(QMouseEvent *)
{
    m_isSecondPress = true;
}

void EventBlock::mouseUngrabEvent()
{
    setDown(false);
}

void EventBlock::touchEvent(QTouchEvent *event)
{
    const QEventPoint &finger = event->points().first();
    switch (finger.state()) {
    case QEventPoint::Pressed:
        press();
        break;
    case QEventPoint::Updated:
        setDown(contains(finger.position()));
        break;
    case QEventPoint::Released: {
        const bool isClick = m_isDown;
        setDown(false);
        if (isClick)
            emit clicked();
        break;
    }
    default:
        break;
    }
}

void EventBlock::touchUngrabEvent()
{
    setDown(false);
}

void EventBlock::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        setDown(true);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat())
            emit clicked();
        break;
    default:
        event->ignore();
    }
}

void EventBlock::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space) {
        event->ignore();
        return;
    }
    const bool isClick = m_isDown && !event->isAutoRepeat();
    if (!event->isAutoRepeat())
        setDown(false);
    if (isClick)
        emit clicked();
}

} // namespace tessaly
