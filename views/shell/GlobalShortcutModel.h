#pragma once

#include "platform/GlobalShortcut.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class PlannerStore;

/// Whether one key opens the field that finds and adds from every program. Off until the user wants it.
class GlobalShortcutModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ShellModel")
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY changed)
    Q_PROPERTY(bool isOn READ isOn WRITE setOn NOTIFY changed)
    Q_PROPERTY(QString keys READ keys NOTIFY changed)

public:
    /// Both must outlive the model; takes over the shortcut's handlers. Asks the desktop nothing yet.
    GlobalShortcutModel(PlannerStore &store, GlobalShortcut &shortcut, bool isWanted, QObject *parent = nullptr);
    ~GlobalShortcutModel() override;

    /// Whether the desktop has such a thing; false until look() has an answer.
    [[nodiscard]] bool isOffered() const;
    [[nodiscard]] bool isOn() const;
    /// Saved at once. What the user refuses in the desktop's dialog is off again.
    void setOn(bool isOn);
    /// In the desktop's words.
    [[nodiscard]] QString keys() const { return m_shortcut.keys(); }

    Q_INVOKABLE void look() { m_shortcut.look(); }
    /// Asks for the key where the user wants it.
    void start();

signals:
    void changed();
    void pressed(const QByteArray &activationToken);

private:
    void save(bool isWanted);
    void turnOn();
    void follow();

    PlannerStore &m_store;
    GlobalShortcut &m_shortcut;
    bool m_isWanted;
    GlobalShortcut::State m_state = GlobalShortcut::State::Unknown;
};

} // namespace tessaly
