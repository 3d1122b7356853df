#include "platform/images/heif/heif_image_plugin.h"

#include "platform/images/heif/heif_image_handler.h"

QImageIOPlugin::Capabilities ZelkamHeifImagePlugin::capabilities(QIODevice *device,
                                                                 const QByteArray &format) const
{
    if (format == "heic" || format == "heif" || format == "avif")
        return CanRead;
    if (!format.isEmpty() || !device || !device->isReadable())
        return {};
    return zelkam::HeifImageHandler::canRead(device) ? Capabilities(CanRead) : Capabilities();
}

QImageIOHandler *ZelkamHeifImagePlugin::create(QIODevice *device, const QByteArray &format) const
{
    auto *handler = new zelkam::HeifImageHandler;
    handler->setDevice(device);
    handler->setFormat(format);
    return handler;
}
