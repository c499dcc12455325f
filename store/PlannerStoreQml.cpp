#include "store/PlannerStoreQml.h"

#include <QJSEngine>

namespace tessaly {

PlannerStore *PlannerStoreQml::create(QQmlEngine *, QJSEngine *)
{
    Q_ASSERT(s_store);
    QJSEngine::setObjectOwnership(s_store, QJSEngine::CppOwnership);
    return s_store;
}

} // namespace tessaly
