#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqml.h>

namespace tessaly {

/// Takes what an input method sends to a field, which itself gets none of it: for a field that writes its own text.
class InputMethodTap : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *field READ field WRITE setField NOTIFY fieldChanged)
    /// What is being composed: to be shown, but not text yet.
    Q_PROPERTY(QString preedit READ preedit NOTIFY preeditChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *field() const { return m_field; }
    void setField(QQuickItem *field);
    [[nodiscard]] const QString &preedit() const { return m_preedit; }

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void fieldChanged();
    void preeditChanged();
    /// The input method has written the text.
    void committed(const QString &text);

private:
    void setPreedit(const QString &preedit);

    QPointer<QQuickItem> m_field;
    QString m_preedit;
};

} // namespace tessaly
