// A writer to be killed, for the kill-anywhere test:
//   zeb_killchild write FILE SEED   writes to the first job's paragraphs without end: adds,
//                                   changes texts and check marks, removes, several at once;
//                                   announces each write ("begin ...") and acknowledges it once
//                                   it returned ("ack ...")
//   zeb_killchild reset FILE        prints "start", replaces the office with the sample office
//                                   and prints "done"
#include "contracts/failure.h"
#include "contracts/textobject.h"
#include "officefile.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storetextobjects.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <cstdio>

using namespace ZebObjects;

namespace {

void say(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

int write(const QString& file, quint32 seed)
{
    QRandomGenerator random(seed);
    const auto store = Store::open(file, Store::OpenMode::OpenExisting);
    const auto texts = store->openJob(store->jobs().first().id)->coverLetterParagraphs();
    QStringList keys;
    for (const auto& t : texts->Enumerate())
        keys.append(t->Key());
    for (int n = 1;; ++n) {
        const int kind = keys.isEmpty() ? 0 : int(random.bounded(10));
        const QString key = keys.isEmpty() ? QString() : keys[random.bounded(int(keys.size()))];
        if (kind < 4) {
            const bool selected = random.bounded(2) == 1;
            say(QStringLiteral("begin add %1 %2").arg(n).arg(int(selected)));
            const QString added = texts->Add(QStringLiteral("Text %1").arg(n), selected)->Key();
            keys.append(added);
            say(QStringLiteral("ack add %1 %2 %3").arg(n).arg(int(selected)).arg(added));
        } else if (kind < 6) {
            say(QStringLiteral("begin text %1 %2").arg(key).arg(n));
            texts->Item(key)->setText(QStringLiteral("Text %1").arg(n));
            say(QStringLiteral("ack text %1 %2").arg(key).arg(n));
        } else if (kind < 8) {
            const bool selected = random.bounded(2) == 1;
            say(QStringLiteral("begin select %1 %2").arg(key).arg(int(selected)));
            texts->Item(key)->setSelected(selected);
            say(QStringLiteral("ack select %1 %2").arg(key).arg(int(selected)));
        } else if (kind < 9) {
            say(QStringLiteral("begin remove %1").arg(key));
            texts->Remove(key);
            keys.removeOne(key);
            say(QStringLiteral("ack remove %1").arg(key));
        } else {
            // Several changes in one transaction: all of them or none.
            say(QStringLiteral("begin batch %1").arg(n));
            QStringList added;
            store->writeAll([&] {
                for (int i = 0; i < 3; ++i)
                    added.append(
                        texts->Add(QStringLiteral("Text %1.%2").arg(n).arg(i), false)->Key());
            });
            keys.append(added);
            say(QStringLiteral("ack batch %1 %2").arg(n).arg(added.join(QLatin1Char(' '))));
        }
    }
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3)
        return 64;
    try {
        if (args[1] == QLatin1String("write") && args.size() > 3)
            return write(args[2], args[3].toUInt());
        if (args[1] == QLatin1String("reset")) {
            say(QStringLiteral("start"));
            OfficeFile::resetSample(args[2]);
            say(QStringLiteral("done"));
            return 0;
        }
    } catch (const Failure& f) {
        std::fprintf(stderr, "%s\n", f.what());
        return 1;
    }
    return 64;
}
