#pragma once

#include <QByteArrayView>

namespace zelkam {

/// How the pictures of a HEIF file are stored. A decoder that is asked for what is stored gives it
/// as it is; every other wish, also that for nothing certain, makes libheif convert all of it.
struct HeifCoding
{
    bool isPlain = true;  ///< not of tiles, nor in AV1: those libheif makes red, green and blue
    int chromaFormat = 1; ///< as H.265 counts them: 0 grey, 1 4:2:0, 2 4:2:2, 3 4:4:4
};

/// Looks at a file's boxes (ISO/IEC 23008-12). What is broken or strange is not plain: the
/// decoder decides.
HeifCoding heifCoding(QByteArrayView file);

} // namespace zelkam
