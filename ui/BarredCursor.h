#pragma once

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// Shows the "not here" cursor over the whole program while `isShown`, wherever the pointer is: what is dragged has the
/// pointer, so that no item's own cursor would be seen.
class BarredCursor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged)

public:
    using QObject::QObject;
    BarredCursor(const BarredCursor &) = delete;
    BarredCursor &operator=(const BarredCursor &) = delete;
    BarredCursor(BarredCursor &&) = delete;
    BarredCursor &operator=(BarredCursor &&) = delete;
    ~BarredCursor() override { setShown(false); }

    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setShown(bool isShown);

signals:
    void isShownChanged();

private:
    bool m_isShown = false;
};

} // namespace tessaly
