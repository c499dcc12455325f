#include "app/QtTexts.h"

#include "store/PlannerStore.h"

namespace tessaly {

using namespace Qt::StringLiterals;

QtTexts::QtTexts(const PlannerStore &store, QObject *parent) : QTranslator(parent), m_store(store)
{
}

QString QtTexts::translate(const char *, const char *sourceText, const char *, int) const
{
    const QLatin1String source(sourceText);
    if (source == "Open"_L1)
        return m_store.text(u"打开"_s, u"Open"_s);
    if (source == "Cancel"_L1)
        return m_store.text(u"取消"_s, u"Cancel"_s);
    if (source == "Filter"_L1)
        return m_store.text(u"类型"_s, u"Type"_s);
    return {};
}

} // namespace tessaly
