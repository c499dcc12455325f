#pragma once

#include "model/AppLanguage.h"
#include "store/PlannerStore.h"

#include <QtQml/qqml.h>

class QJSEngine;
class QQmlEngine;

namespace tessaly {

/// Tells QML's tools of the properties that the store inherits.
struct PlannerSettingsQml
{
    Q_GADGET
    QML_FOREIGN(tessaly::PlannerSettings)
    QML_ANONYMOUS
};

/// The part of the store that works with the system's calendars, for its enumerators.
struct CalendarSyncQml
{
    Q_GADGET
    QML_FOREIGN(tessaly::CalendarSync)
    QML_NAMED_ELEMENT(CalendarSync)
    QML_UNCREATABLE("Belongs to PlannerStore")
};

/// The choices for the week and the month.
struct DisplayChoicesQml
{
    Q_GADGET
    QML_FOREIGN(tessaly::DisplayChoices)
    QML_NAMED_ELEMENT(DisplayChoices)
    QML_UNCREATABLE("Belongs to PlannerStore")
};

/// Hands the existing store to QML as the singleton `PlannerStore`.
struct PlannerStoreQml
{
    Q_GADGET
    QML_FOREIGN(tessaly::PlannerStore)
    QML_SINGLETON
    QML_NAMED_ELEMENT(PlannerStore)

public:
    /// Must be called before an engine first asks for the singleton; the store must outlive every engine.
    static void setStore(PlannerStore *store) { s_store = store; }
    static PlannerStore *create(QQmlEngine *, QJSEngine *);

private:
    static inline PlannerStore *s_store = nullptr;
};

/// Makes the enumerators of AppLanguage known to QML, as Planner.Chinese and Planner.English.
namespace PlannerNamespaceQml {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(tessaly)
QML_NAMED_ELEMENT(Planner)
} // namespace PlannerNamespaceQml

} // namespace tessaly
