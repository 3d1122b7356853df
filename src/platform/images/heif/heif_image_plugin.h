#pragma once

#include <QImageIOPlugin>

/// Makes HEIC and AVIF pictures known to QImageReader. A static plug-in, outside of every namespace
/// as Q_IMPORT_PLUGIN wants it.
class ZelkamHeifImagePlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "heif_image_plugin.json")

public:
    Capabilities capabilities(QIODevice *device, const QByteArray &format) const override;
    QImageIOHandler *create(QIODevice *device, const QByteArray &format) const override;
};
