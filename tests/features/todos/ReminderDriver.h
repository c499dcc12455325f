#pragma once

#include "tests/store/StoreUnderTest.h"
#include "views/todos/ReminderViewModel.h"

#include <QAbstractItemModelTester>

namespace tessaly {

/// The to-do screen over fakes, on Wednesday 2026-09-09 12:00 in Vienna, in English.
struct ReminderDriver : StoreUnderTest
{
    std::unique_ptr<ReminderViewModel> screen;
    std::unique_ptr<QAbstractItemModelTester> tester;

    ReminderDriver()
    {
        calendar = UserCalendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale(QLocale::English));
        clock.setNow(at(9, 12));
    }

    /// In September 2026.
    [[nodiscard]] Instant at(int day, int hour, int minute = 0) const
    {
        return calendar.instant(QDate(2026, 9, day), QTime(hour, minute));
    }

    void open(const QList<ReminderItem> &reminders = {})
    {
        startInEnglish();
        for (const ReminderItem &item : reminders)
            store->addReminder(item);
        openScreen();
    }
    void openScreen()
    {
        tester.reset();
        screen = std::make_unique<ReminderViewModel>();
        screen->setStore(store.get());
        tester = std::make_unique<QAbstractItemModelTester>(screen->rows(),
                                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
    }

    /// Row of the header or to-do with the text, or -1.
    [[nodiscard]] int row(const QString &text) const
    {
        const QStringList lines = shown();
        for (int row = 0; row < lines.size(); ++row) {
            if (lines.at(row).mid(lines.at(row).indexOf(u' ') + 1) == text)
                return row;
        }
        return -1;
    }
    void expand(const QString &header) { screen->setExpanded(row(header), true); }
    void collapse(const QString &header) { screen->setExpanded(row(header), false); }
    void toggle(const QString &title) { screen->toggle(row(title)); }

    /// What the list shows: "v", ">" or "." (open, closed, empty) before a header; "o" or "x" before a to-do; "_" after
    /// the mark of a card's last row; one step in, the mark is doubled.
    [[nodiscard]] QStringList shown() const
    {
        QStringList lines;
        for (const ReminderListRow &shown : screen->rows()->rows())
            lines.append(line(shown));
        return lines;
    }

private:
    [[nodiscard]] static QString line(const ReminderListRow &row)
    {
        const bool isReminder = row.kind == ReminderRowKind::Kind::Reminder;
        QString mark = row.isExpanded ? QStringLiteral("v") : QStringLiteral(">");
        QString text = row.label.isEmpty() ? QVariant::fromValue(row.kind).toString() : row.label;
        if (isReminder) {
            mark = row.isComplete ? QStringLiteral("x") : QStringLiteral("o");
            text = row.title;
        } else if (row.isEmpty) {
            mark = QStringLiteral(".");
        }
        if (row.isNested())
            mark += mark;
        if (row.isLast)
            mark += u'_';
        return mark + u' ' + text;
    }
};

} // namespace tessaly
