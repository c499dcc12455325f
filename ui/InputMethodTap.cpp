#include "ui/InputMethodTap.h"

#include <QInputMethodEvent>

#include <utility>

namespace tessaly {

void InputMethodTap::setField(QQuickItem *field)
{
    if (m_field == field)
        return;
    if (m_field)
        m_field->removeEventFilter(this);
    m_field = field;
    if (field)
        field->installEventFilter(this);
    setPreedit({});
    emit fieldChanged();
}

bool InputMethodTap::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut)
        setPreedit({});
    if (event->type() != QEvent::InputMethod)
        return QObject::eventFilter(watched, event);
    const auto &input = static_cast<const QInputMethodEvent &>(*event);
    const QString text = input.commitString();
    setPreedit(input.preeditString());
    if (!text.isEmpty())
        emit committed(text);
    event->accept();
    return true;
}

void InputMethodTap::setPreedit(const QString &preedit)
{
    if (std::exchange(m_preedit, preedit) != preedit)
        emit preeditChanged();
}

} // namespace tessaly
