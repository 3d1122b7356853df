#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// Header fields between bytes and text. HTTP says little about bytes above 127: most servers send
// UTF-8, some send an older code of their own. Both must survive the way through text, as cookies
// are given back to the server byte for byte.

namespace zelkam {

/// The text of a field: UTF-8, or where it is not valid, each byte above 127 as the code unit
/// 0xDC00 plus the byte.
QString headerText(QByteArrayView bytes);

/// The bytes of a text, the inverse of headerText(). Other text becomes UTF-8.
QByteArray headerBytes(const QString &text);

/// Whether the name is a token by RFC 9110, 5.6.2.
bool isHeaderName(QByteArrayView name);

/// Whether the value holds no control character but the tab: a line break in it would start
/// another header, or another request.
bool isHeaderValue(QByteArrayView value);

} // namespace zelkam
