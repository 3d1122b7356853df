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

/// Installs a table on top of those that are there. The application object owns it.
bool install(const QLocale &locale, const QString &file, const QString &directory)
{
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!translator->load(locale, file, QStringLiteral("_"), directory))
        return false;
    return QCoreApplication::installTranslator(translator.release());
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
    QLocale::setDefault(locale);
    const QString ours = QStringLiteral(":/zelkam/i18n");
    // English lies below every language: texts looked up by a key need a table of their own.
    install(QLocale(QLocale::English), QStringLiteral("zelkam"), ours);
    install(locale, QStringLiteral("zelkam"), ours);
    install(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace zelkam
