#pragma once

#include <QTranslator>

namespace tessaly {

class PlannerStore;

/// The words of Qt's own file dialogs, shown where the desktop has none, in the language of the interface. Qt's
/// translations are a package of their own that many systems lack, and know the language of the system only.
class QtTexts : public QTranslator
{
    Q_OBJECT

public:
    /// The store must outlive it.
    explicit QtTexts(const PlannerStore &store, QObject *parent = nullptr);

    [[nodiscard]] QString translate(const char *context, const char *sourceText, const char *disambiguation,
                                    int n) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }

private:
    const PlannerStore &m_store;
};

} // namespace tessaly
