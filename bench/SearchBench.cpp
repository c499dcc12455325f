#include "bench/Bench.h"
#include "store/DocumentSearch.h"
#include "store/PlannerSearch.h"
#include "store/RecordSearch.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/RecordGenerator.h"
#include "views/palette/PaletteModel.h"

#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include "platform/common/LocalFileSystem.h"

namespace tessaly {
namespace {

using namespace Qt::StringLiterals;

constexpr double oneFrame = 0.016;
constexpr qsizetype manySchedules = 100'000;
constexpr int manyDocuments = 1'000;
constexpr qsizetype documentBytes = 10'000;

/// Documents in both languages on the disk.
QList<DocumentSearch::File> writeDocuments(const QString &folder)
{
    RecordGenerator generator(9);
    QList<DocumentSearch::File> files;
    for (int number = 0; number < manyDocuments; ++number) {
        QByteArray text;
        while (text.size() < documentBytes)
            text += (generator.words(12) + u" 微观经济学 "_s + QString::number(number * 7919 % 65537) + u'\n').toUtf8();
        const QString path = folder + u"/%1.md"_s.arg(number);
        QFile file(path);
        if (file.open(QFile::WriteOnly))
            file.write(text);
        files.append({QUuid::createUuid(), path});
    }
    return files;
}

void findAll(DocumentSearch &search, const QList<DocumentSearch::File> &files, const QString &text)
{
    QEventLoop loop;
    search.find(files, SearchQuery::of(text), [&loop](const QList<DocumentHit> &) { loop.quit(); });
    loop.exec();
}

} // namespace

TESSALY_BENCH(search)
{
    StoreUnderTest planner;
    planner.put(keys::storageKey,
                encodeSavedData(RecordGenerator(5).savedData(manySchedules, 1000, 50)).value_or(QByteArray()));
    PlannerStore &store = planner.start();
    PaletteModel palette;
    palette.setStore(&store);
    palette.begin();
    QEventLoop preparation;
    QObject::connect(&PlannerSearch::of(store), &PlannerSearch::prepared, &preparation, &QEventLoop::quit);
    preparation.exec();
    const QStringList typed{u"a"_s, u"re"_s, u"nothing of this"_s, u"zzq"_s, u"lunch tomorrow 12:30"_s};
    int turn = 0;
    const QString frame = u"one frame, 16 ms"_s;
    const auto times = bench::medianSeconds(15, {{[&] { palette.setText(typed.at(turn++ % typed.size())); }}, {[&] {
                                                     RecordSearch search(store);
                                                     search.prepare();
                                                     bench::keep(&search);
                                                 }}});
    report.atMostTimes(u"a letter typed, 100,000 schedules"_s, times[0], frame, oneFrame, 1);
    report.shown(u"what is compared, worked out once"_s, times[1], frame, oneFrame);

    const QTemporaryDir folder;
    const LocalFileSystem disk;
    const QList<DocumentSearch::File> files = writeDocuments(folder.path());
    const auto texts = bench::medianSeconds(5, {{[&] {
                                                DocumentSearch fresh(disk);
                                                findAll(fresh, files, u"nowhere"_s);
                                            }}});
    DocumentSearch search(disk);
    findAll(search, files, u"nowhere"_s);
    const auto later = bench::medianSeconds(
        9, {{[&] { findAll(search, files, u"nowhere"_s); }}, {[&] { findAll(search, files, u"经济"_s); }}});
    report.shown(u"1,000 documents of 10 KB, the first time"_s, texts[0], frame, oneFrame);
    report.atMostTimes(u"a word that none has"_s, later[0], frame, oneFrame, 1);
    report.shown(u"a word that all have"_s, later[1], frame, oneFrame);
    report.atMostTimesBytes(u"what is remembered of the texts"_s, double(search.rememberedBytes()), u"the texts"_s,
                            double(documentBytes) * manyDocuments, 0.25);
}

} // namespace tessaly
