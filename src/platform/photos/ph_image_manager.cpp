#include "platform/photos/ph_image_manager.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/images/picture.h"
#include "platform/images/picture_kind.h"
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

qint64 PHImageManager::newSequence()
{
    static qint64 last = 0;
    return ++last;
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

PHImageRequestID PHImageManager::requestPreparedImageData(const PHAsset &forAsset,
                                                          const PHImageRequestOptions &options,
                                                          Preparation preparation)
{
    const PHImageRequestID request = ++m_lastRequest;
    const qint64 sequence = options.sequence;
    const auto prepare = std::make_shared<const Preparation>(std::move(preparation));
    m_open[sequence].emplace(request, Request{prepare, {}});
    PhotoWorkers::start(
        [manager = QPointer(this), sequence, request, path = forAsset.filePath(),
         prepare](PhotoReading &reading) {
            const auto data = readPictureFile(path);
            reading.end();
            const auto type = data ? pictureTypeIdentifier(*data) : std::nullopt;
            // The preparation goes along: what it holds is not to be let go of on this thread.
            DispatchQueue::main().async(
                [manager, sequence, request, prepare, delivery = (*prepare)(data, type)]() mutable {
                    if (manager)
                        manager->deliver(sequence, request, std::move(delivery));
                });
        },
        PhotoWorkers::Kind::requested,
        [manager = QPointer(this), sequence, request] {
            if (manager)
                manager->giveUp(sequence, request);
        });
    return request;
}

PHImageManager::Request *PHImageManager::openRequest(qint64 sequence, PHImageRequestID request)
{
    const auto requests = m_open.find(sequence);
    if (requests == m_open.end())
        return nullptr;
    const auto found = requests->second.find(request);
    return found != requests->second.end() && !found->second.delivery ? &found->second : nullptr;
}

void PHImageManager::giveUp(qint64 sequence, PHImageRequestID request)
{
    if (const Request *open = openRequest(sequence, request))
        deliver(sequence, request, (*open->preparation)(std::nullopt, std::nullopt));
}

void PHImageManager::deliver(qint64 sequence, PHImageRequestID request,
                             std::function<void()> delivery)
{
    Request *const prepared = openRequest(sequence, request);
    if (!prepared)
        return; // given up before
    prepared->delivery = std::move(delivery);
    const QPointer<PHImageManager> self(this);
    // A handler may run an event loop: whatever is taken out is counted before it runs.
    while (self) {
        const auto requests = m_open.find(sequence);
        if (requests == m_open.end() || !requests->second.begin()->second.delivery)
            return;
        const auto next = requests->second.extract(requests->second.begin());
        if (requests->second.empty())
            m_open.erase(requests);
        next.mapped().delivery();
    }
}

} // namespace zelkam
