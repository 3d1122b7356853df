// Lookups of MIME types beside a QHash with the same keys and beside Qt's MIME database.

#include "mime/mime_type.h"
#include "mime/mime_types.h"
#include "platform/foundation/system_version.h"
#include "platform/foundation/ut_type.h"

#include <QHash>
#include <QMimeDatabase>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 25;
qsizetype sink = 0; // what is looked up is added here, so that no lookup can be left out

/// Nanoseconds for one lookup in the fastest of some rounds: whatever else runs on the machine can
/// only make one slower.
template<typename Lookup>
double measure(const std::vector<QString> &names, int repeats, Lookup lookup)
{
    double fastest = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < repeats; ++i) {
            for (const QString &name : names)
                sink += lookup(name);
        }
        const std::chrono::duration<double, std::nano> time =
            std::chrono::steady_clock::now() - start;
        fastest = std::min(fastest, time.count() / repeats / double(names.size()));
    }
    return fastest;
}

bool row(const char *what, double ours, const char *peer, double theirs, double wanted)
{
    std::printf("| %s | %.1f ns | %s: %.1f ns | %.1f | %.0f |\n", what, ours, peer, theirs,
                theirs / ours, wanted);
    return theirs / ours >= wanted;
}

} // namespace

int main()
{
    QHash<QString, QString> hash;
    std::vector<QString> extensions;
    std::vector<QString> paths;
    std::vector<QString> known;
    for (const MimeTypesRow &row : mimeTypes()) {
        const QString extension = row.extension.toString();
        hash.insert(extension, row.mimeType.toString());
        extensions.push_back(extension);
        paths.push_back(u"/home/ann/Documents/Annual report."_s + extension);
        if (UTType::fromFilenameExtension(extension))
            known.push_back(extension);
    }
    std::vector<QString> mixed = extensions; // a third of them is not in the table
    for (size_t i = 0; i < extensions.size() / 2; ++i)
        mixed.push_back(u"no"_s + QString::number(i));

    std::puts("| lookup | here | beside | times the rate | wanted |\n|---|---|---|---|---|");
    bool good = true;
    good &= row(
        "an extension of the table",
        measure(extensions, 1000, [](const QString &name) { return mimeTypesValue(name).size(); }),
        "QHash",
        measure(extensions, 1000,
                [&](const QString &name) { return hash.constFind(name)->size(); }),
        2);
    good &=
        row("one in three is not there",
            measure(mixed, 1000, [](const QString &name) { return mimeTypesValue(name).size(); }),
            "QHash",
            measure(mixed, 1000,
                    [&](const QString &name) {
                        const auto found = hash.constFind(name);
                        return found == hash.cend() ? 0 : found->size();
                    }),
            2);
    setSystemVersion(QVersionNumber(13, 0));
    const double table =
        measure(paths, 1000, [](const QString &path) { return mimeType(path).size(); });
    row("a path, by the table", table, "QHash, extension cut off and in lower case",
        measure(paths, 1000,
                [&](const QString &path) {
                    return hash.value(pathExtension(path).toString().toLower()).size();
                }),
        1);
    good &= row("an extension of the registry",
                measure(known, 2000,
                        [](const QString &name) {
                            return UTType::fromFilenameExtension(name)->preferredMIMEType()->size();
                        }),
                "QMimeDatabase",
                measure(known, 10,
                        [](const QString &name) {
                            return QMimeDatabase()
                                .mimeTypeForFile(u"a."_s + name, QMimeDatabase::MatchExtension)
                                .name()
                                .size();
                        }),
                20);
    return sink > 0 && good ? 0 : 2;
}
