#include "platform/ui/release_later.h"

#include <QCoreApplication>
#include <utility>
#include <vector>

namespace zelkam {

namespace {

std::vector<std::shared_ptr<QObject>> &kept()
{
    static std::vector<std::shared_ptr<QObject>> objects;
    return objects;
}

void releaseAll()
{
    // What goes may let go of more.
    while (!kept().empty())
        std::exchange(kept(), {}).clear();
}

} // namespace

void releaseLater(std::shared_ptr<QObject> object)
{
    if (!QCoreApplication::instance())
        return;
    if (kept().empty()) {
        qAddPostRoutine(releaseAll);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [] {
                qRemovePostRoutine(releaseAll);
                releaseAll();
            },
            Qt::QueuedConnection);
    }
    kept().push_back(std::move(object));
}

} // namespace zelkam
