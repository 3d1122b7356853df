#include "platform/foundation/bundle.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QSet>
#include <QTranslator>
#include <memory>
#include <mutex>

// Outside of any namespace, as the macro demands.
static void initResources()
{
    // A static library's resources are linked in only when somebody names them.
    Q_INIT_RESOURCE(zelkam_i18n);
}

namespace zelkam {

namespace {

std::mutex registryMutex;

QSet<QString> &registry()
{
    static QSet<QString> identifiers;
    return identifiers;
}

/// Installs a table on top of those that are there. The application object owns it. Gives the
/// language that the table is in; nothing when there is no table.
std::optional<QLocale> install(const QLocale &locale, const QString &file, const QString &directory)
{
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!translator->load(locale, file, QStringLiteral("_"), directory))
        return std::nullopt;
    const QLocale language(translator->language());
    QCoreApplication::installTranslator(translator.release());
    return language;
}

} // namespace

std::optional<Bundle> Bundle::withIdentifier(const QString &identifier)
{
    const std::lock_guard lock(registryMutex);
    if (!registry().contains(identifier))
        return std::nullopt;
    return Bundle(identifier.toUtf8());
}

void Bundle::add(const QString &identifier)
{
    const std::lock_guard lock(registryMutex);
    registry().insert(identifier);
}

QString Bundle::localizedString(const QString &forKey, const QString &value) const
{
    const QString found =
        QCoreApplication::translate(m_identifier.constData(), forKey.toUtf8().constData());
    return found == forKey && !value.isEmpty() ? value : found;
}

void installTranslations(const QLocale &locale)
{
    initResources();
    const QString ours = QStringLiteral(":/zelkam/i18n");
    const QLocale english(QLocale::English);
    // English lies below every language: texts looked up by a key need a table of their own.
    install(english, QStringLiteral("zelkam"), ours);
    const QLocale found = install(locale, QStringLiteral("zelkam"), ours).value_or(english);
    // Numbers, dates and the direction of lines go with the language that is read, which need not
    // be the one that was asked for. A territory's own habits stay where the language is the same.
    const QLocale shown = found.language() == locale.language() ? locale : found;
    QLocale::setDefault(shown);
    install(shown, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace zelkam
