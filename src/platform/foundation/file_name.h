#pragma once

#include <QByteArray>
#include <QString>

namespace zelkam {

/// The name or path that the file system gives, as text from which encodeFileName() makes the
/// same bytes again. A byte that belongs to no UTF-8 (an "é" of Latin-1) is kept as a lone
/// surrogate, U+DC80 to U+DCFF, which no text has. From any thread.
QString decodeFileName(const QByteArray &bytes);

/// The bytes of a name or path for the file system: UTF-8, and what decodeFileName() has kept.
/// From any thread.
QByteArray encodeFileName(const QString &name);

/// A name with nothing in it that is not drawn or that turns what is drawn: no control or format
/// characters, and no line ends. Joiners stay between the letters or pictures that they shape.
/// Kept bytes read as Windows-1252. A name of which nothing can be seen becomes a text for the
/// person that says so. From any thread.
QString visibleName(const QString &name);

/// The visible name as it stands in a line or a sentence. One with right-to-left letters is
/// isolated, so that it leaves the order of what is around it alone. Names from outside (those of
/// files and folders) are drawn and read out in this form only. From any thread.
QString displayName(const QString &name);

} // namespace zelkam
