#pragma once

#include <QLocale>
#include <QString>
#include <optional>

namespace zelkam {

/// A module's strings for people, found by the module's identifier.
///
/// The tables are Qt translations: the identifier is the translation context and the key is the
/// source text. From any thread.
class Bundle
{
public:
    /// The bundle of an identifier, when that module has been added.
    static std::optional<Bundle> withIdentifier(const QString &identifier);

    /// Makes a module's bundle known; adding it twice is harmless. A module adds its own.
    static void add(const QString &identifier);

    /// The text of a key in the user's language; where no table has it, the given value, or the
    /// key itself when the value is empty.
    QString localizedString(const QString &forKey, const QString &value = {}) const;

private:
    explicit Bundle(QByteArray identifier) : m_identifier(std::move(identifier)) {}
    QByteArray m_identifier;
};

/// Installs the translations of this product and of Qt for a locale, and makes it the default
/// locale: numbers, dates and directions follow it. Where the product has no translation, all this
/// is done for English. Main thread, once, before the first screen.
void installTranslations(const QLocale &locale);

} // namespace zelkam
