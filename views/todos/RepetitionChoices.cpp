#include "views/todos/RepetitionChoices.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

constexpr std::array<Repetition, 7> offered{Repetition::Never,  Repetition::Daily,   Repetition::Workdays,
                                            Repetition::Weekly, Repetition::Monthly, Repetition::Yearly,
                                            Repetition::Other};

} // namespace

int repetitionRow(Repetition repetition)
{
    return static_cast<int>(std::ranges::find(offered, repetition) - offered.cbegin());
}

Repetition repetitionInRow(int row)
{
    return row > 0 && row < std::ssize(offered) ? offered.at(static_cast<size_t>(row)) : Repetition::Never;
}

QStringList repetitionTexts(bool hasOther, AppLanguage language)
{
    QStringList texts;
    for (const Repetition each : offered) {
        if (each != Repetition::Other || hasOther)
            texts.append(repetitionText(each, false).in(language));
    }
    return texts;
}

} // namespace tessaly
