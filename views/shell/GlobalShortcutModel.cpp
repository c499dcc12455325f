#include "views/shell/GlobalShortcutModel.h"

#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <utility>

namespace tessaly {

using State = GlobalShortcut::State;

GlobalShortcutModel::GlobalShortcutModel(PlannerStore &store, GlobalShortcut &shortcut, bool isWanted, QObject *parent)
    : QObject(parent), m_store(store), m_shortcut(shortcut), m_isWanted(isWanted), m_state(shortcut.state())
{
    shortcut.setChangeHandler([this] { follow(); });
    shortcut.setPressHandler([this](const QByteArray &activationToken) { emit pressed(activationToken); });
}

GlobalShortcutModel::~GlobalShortcutModel()
{
    m_shortcut.setChangeHandler({});
    m_shortcut.setPressHandler({});
}

bool GlobalShortcutModel::isOffered() const
{
    return m_shortcut.state() != State::Unknown && m_shortcut.state() != State::Missing;
}

bool GlobalShortcutModel::isOn() const
{
    return m_shortcut.state() == State::On || m_shortcut.state() == State::Waiting;
}

void GlobalShortcutModel::setOn(bool isOn)
{
    save(isOn);
    if (isOn)
        turnOn();
    else
        m_shortcut.turnOff();
}

void GlobalShortcutModel::start()
{
    if (m_isWanted)
        turnOn();
}

void GlobalShortcutModel::save(bool isWanted)
{
    if (std::exchange(m_isWanted, isWanted) != isWanted)
        m_store.savePreference(keys::isShortcutGlobal, isWanted);
}

void GlobalShortcutModel::turnOn()
{
    m_shortcut.turnOn(m_store.text(QStringLiteral("查找与添加"), QStringLiteral("Find and add")));
}

void GlobalShortcutModel::follow()
{
    const State before = std::exchange(m_state, m_shortcut.state());
    // It was refused; asking at every start would be a nuisance.
    if (before == State::Waiting && m_state == State::Off)
        save(false);
    emit changed();
}

} // namespace tessaly
