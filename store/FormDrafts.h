#pragma once

#include <QObject>
#include <QString>

namespace tessaly {

class PlannerStore;

/// What stands in the add forms and was not added. The screens come and go; this stays while the program runs, and is
/// not saved.
class FormDrafts : public QObject
{
    Q_OBJECT

public:
    /// Those of the store, as long as it lives.
    static FormDrafts &of(PlannerStore &store);

    QString toDoTitle;
    QString toDoRequirement;
    QString scheduleTitle;

private:
    using QObject::QObject;
};

} // namespace tessaly
