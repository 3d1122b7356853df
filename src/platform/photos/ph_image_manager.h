#pragma once

#include "platform/photos/ph_asset.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace zelkam {

/// How an asset's data is to be read.
class PHImageRequestOptions
{
public:
    /// Whether what lies elsewhere may be fetched. All assets of a folder are at hand, also those
    /// of a mounted network folder, which the system reads like any other: it decides nothing.
    bool isNetworkAccessAllowed = false;

    /// Results of one sequence come in the order of their requests, whatever becomes of those of
    /// others. PHImageManager::newSequence() gives a number that nobody else has.
    qint64 sequence = 0;
};

/// How the data of an asset is to be turned to be seen upright (the values are Exif's).
enum class CGImagePropertyOrientation : quint32 { up = 1 };

using PHImageRequestID = qint32;

/// Reads assets on worker threads. Results are delivered on the main thread, from the event loop,
/// and in one sequence in the order of the requests: the handler of the last request is the last
/// to run. A request is never lost; an asset that cannot be read is delivered without data, and so
/// is one that does not come in half a minute: its folder may lie on a server that is gone.
///
/// Main thread only.
class PHImageManager : public QObject
{
    Q_OBJECT

public:
    /// Without data when the file is gone, cannot be read or is no picture's. The orientation is
    /// always up, as it lies in the data itself, where a decoder applies it; the information is
    /// empty.
    using ResultHandler = std::function<void(
        const std::optional<QByteArray> &imageData, const std::optional<QString> &dataUTI,
        CGImagePropertyOrientation orientation, const QVariantMap &info)>;

    /// Runs on a worker thread as soon as the data is there, and returns what is to run on the
    /// main thread when it is the request's turn: never an empty function. For work that would
    /// hold up the screens. For a request that is given up it runs on the main thread, without
    /// data, even though it may be running on the worker thread still.
    using Preparation = std::function<std::function<void()>(
        const std::optional<QByteArray> &imageData, const std::optional<QString> &dataUTI)>;

    static PHImageManager &defaultManager();
    static qint64 newSequence();

    explicit PHImageManager(QObject *parent = nullptr);
    ~PHImageManager() override;

    PHImageRequestID requestImageDataAndOrientation(const PHAsset &forAsset,
                                                    const PHImageRequestOptions &options,
                                                    ResultHandler resultHandler);

    /// The same, with the work of the handler split in two: most of it beside the main thread.
    PHImageRequestID requestPreparedImageData(const PHAsset &forAsset,
                                              const PHImageRequestOptions &options,
                                              Preparation preparation);

private:
    struct Request
    {
        std::shared_ptr<const Preparation> preparation;
        std::function<void()> delivery; ///< empty until it is prepared
    };

    Request *openRequest(qint64 sequence, PHImageRequestID request);
    void giveUp(qint64 sequence, PHImageRequestID request);
    void deliver(qint64 sequence, PHImageRequestID request, std::function<void()> delivery);

    PHImageRequestID m_lastRequest = 0;
    std::map<qint64, std::map<PHImageRequestID, Request>> m_open; ///< by sequence
};

} // namespace zelkam
