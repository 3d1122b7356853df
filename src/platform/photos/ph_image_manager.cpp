#include "platform/photos/ph_image_manager.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/images/picture.h"
#include "platform/photos/photo_workers.h"

#include <QCoreApplication>
#include <QPointer>

namespace zelkam {

PHImageManager &PHImageManager::defaultManager()
{
    static QPointer<PHImageManager> manager;
    if (!manager)
        manager = new PHImageManager(QCoreApplication::instance());
    return *manager;
}

PHImageManager::PHImageManager(QObject *parent) : QObject(parent) {}

PHImageManager::~PHImageManager() = default;

PHImageRequestID PHImageManager::requestImageDataAndOrientation(
    const PHAsset &forAsset, const PHImageRequestOptions &options, ResultHandler resultHandler)
{
    return requestPreparedImageData(
        forAsset, options,
        [handler = std::move(resultHandler)](const std::optional<QByteArray> &imageData,
                                             const std::optional<QString> &dataUTI) {
            return [handler, imageData, dataUTI] {
                handler(imageData, dataUTI, CGImagePropertyOrientation::up, {});
            };
        });
}

PHImageRequestID
PHImageManager::requestPreparedImageData(const PHAsset &forAsset,
                                         const PHImageRequestOptions & /*decides nothing here*/,
                                         Preparation preparation)
{
    const PHImageRequestID request = ++m_lastRequest;
    PhotoWorkers::start(
        [manager = QPointer(this), request, path = forAsset.filePath(),
         preparation = std::move(preparation)] {
            const auto data = readPictureFile(path);
            const auto type = data ? pictureTypeIdentifier(*data) : std::nullopt;
            DispatchQueue::main().async(
                [manager, request, delivery = preparation(data, type)]() mutable {
                    if (manager)
                        manager->deliver(request, std::move(delivery));
                });
        },
        PhotoWorkers::Kind::requested);
    return request;
}

void PHImageManager::deliver(PHImageRequestID request, std::function<void()> delivery)
{
    m_early.emplace(request, std::move(delivery));
    const QPointer<PHImageManager> self(this);
    // A handler may run an event loop: whatever is taken out is counted before it runs.
    while (self && !m_early.empty() && m_early.begin()->first == m_nextDelivery) {
        auto next = m_early.extract(m_early.begin());
        ++m_nextDelivery;
        next.mapped()();
    }
}

} // namespace zelkam
