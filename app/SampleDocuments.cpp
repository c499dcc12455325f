#include "app/SampleData.h"

#include <QFile>

namespace tessaly {

namespace {

constexpr int none = -1;

struct Pair
{
    const char16_t *chinese;
    const char16_t *english;
};

constexpr Pair categoryNames[] = {
    {u"课程讲义", u"Lecture notes"},
    {u"读书笔记", u"Reading notes"},
    {u"写作", u"Writing"},
};

struct Document
{
    /// Index into the categories.
    int category;
    Pair title;
    /// Name of the file with what follows the heading; null for nothing.
    const char *file;
};

/// Newest first.
constexpr Document documents[] = {
    {0, {u"第2讲 需求与弹性", u"Lecture 2: demand and elasticity"}, "elasticity"},
    {none, {u"九月计划", u"Plan for September"}, "september"},
    {0, {u"第1讲 供给与需求", u"Lecture 1: supply and demand"}, nullptr},
    {none, {u"会议速记", u"Meeting notes"}, nullptr},
    {0, {u"课程大纲", u"Syllabus"}, nullptr},
    {1, {u"《国富论》摘记", u"Notes on The Wealth of Nations"}, nullptr},
};

QString textOfFile(const char *name, AppLanguage language)
{
    QFile file(QStringLiteral(":/sample/%1.%2.md").arg(QLatin1String(name), rawValue(language)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("There is no %s", qUtf8Printable(file.fileName()));
    return QString::fromUtf8(file.readAll());
}

} // namespace

SampleDocuments sampleDocuments(AppLanguage language, Instant now)
{
    constexpr double sixHours = 6 * 3600;
    const auto text = [language](Pair pair) {
        return QString::fromUtf16(language == AppLanguage::English ? pair.english : pair.chinese);
    };
    SampleDocuments sample;
    for (const Pair &name : categoryNames)
        sample.library.categories.append({.name = text(name)});
    double age = 0;
    for (const Document &document : documents) {
        age += sixHours;
        MarkdownDocument record{.title = text(document.title), .updatedAt = now.plus(-age)};
        if (document.category != none)
            record.categoryID = sample.library.categories.at(document.category).id;
        QString content = QStringLiteral("# ") + record.title + u'\n';
        if (document.file)
            content += u'\n' + textOfFile(document.file, language);
        sample.texts.insert(record.id, content);
        sample.library.documents.append(record);
    }
    return sample;
}

} // namespace tessaly
