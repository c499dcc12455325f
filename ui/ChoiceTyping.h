#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <QtQml/qqml.h>

namespace tessaly {

/// Chooses an entry of a list by typing how it begins. Whoever owns it calls clear() when the typing pauses.
class ChoiceTyping : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    /// The entry that begins with what is typed, in capitals or not, or -1. Typing begins with the entry after the
    /// current one (-1 for none) and goes round. A character typed again leads on to the next entry that begins with
    /// it, where none begins with the two.
    Q_INVOKABLE [[nodiscard]] int choose(const QString &character, const QStringList &entries, int current);
    Q_INVOKABLE void clear() { m_typed.clear(); }

    /// Sets currentIndex as a click would: a binding of it stays, which an assignment in QML would end.
    Q_INVOKABLE static void setCurrentIndex(QQuickItem *comboBox, int index);

private:
    QString m_typed;
};

} // namespace tessaly
