#include "app/tour.h"

#include "app/command_line.h"
#include "app/demo_files.h"
#include "app/host_application.h"
#include "app/picker_answers.h"
#include "app/screenshots.h"
#include "app/web_view_controller.h"
#include "platform/foundation/console.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos_ui/camera_device.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_navigation_bar.h"
#include "platform/ui/ui_window.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <chrono>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto pollTime = 40ms;
constexpr auto patience = 20s;

UINavigationItem *topItem(UIViewController *screen)
{
    const auto *bar = screen ? screen->view()->findChild<UINavigationBar *>() : nullptr;
    return bar ? bar->topItem() : nullptr;
}

QString outcome(const ScriptReply &reply)
{
    return reply.success ? u"success"_s : reply.status;
}

} // namespace

Tour::Tour(HostApplication &host, PickerAnswers &answers, const HostOptions &options)
    : m_host(host), m_answers(answers)
{
    prepareDevice(options);
    m_poll.setInterval(pollTime);
    connect(&host.bridge(), &ScriptBridge::called, this,
            [](const QString &command, const QString &arguments) {
                // The arguments travel as a list of one.
                print(u"call: %1 %2"_s.arg(command, arguments.mid(1, arguments.size() - 2)));
            });
    connect(&host.bridge(), &ScriptBridge::replied, this, [this](const ScriptReply &reply) {
        m_replies.append(outcome(reply));
        print(u"reply: %1 %2"_s.arg(outcome(reply), reply.message).trimmed());
    });
    connect(
        &host.webViewController(), &WebViewController::loaded, this, [this] { readCards(); },
        Qt::SingleShotConnection);
    connect(&host.webViewController(), &WebViewController::failed, this,
            [this] { emit finished(1); });
}

void Tour::prepareDevice(const HostOptions &options)
{
    if (options.picturesDirectory.isEmpty())
        setPicturesDirectory(m_documents.filePath(u"Pictures"_s));
    if (options.cameraImage.isEmpty())
        setVirtualCameraImage(place(u"dunes.jpg"_s, m_documents.path()));
}

QString Tour::place(const QString &name, const QString &folder) const
{
    const auto contents = demoFile(name);
    QDir().mkpath(folder);
    QFile file(QDir(folder).filePath(name));
    if (contents && file.open(QIODevice::WriteOnly))
        file.write(contents->contents);
    return file.fileName();
}

void Tour::readCards()
{
    const QString script =
        u"JSON.stringify([...document.querySelectorAll('article')].map(card => ({"
        "title: card.querySelector('h3').textContent, ...card.dataset})))"_s;
    waitUntil([this] { return isAtRest(); }, u"the page did not come to rest"_s,
              [this, script] {
                  m_host.page().runJavaScript(script, [this](const QVariant &result) {
                      m_cards = QJsonDocument::fromJson(result.toString().toUtf8()).array();
                      if (m_cards.isEmpty()) {
                          print(u"tour: the demo has no cards"_s);
                          emit finished(1);
                          return;
                      }
                      playNext();
                  });
              });
}

void Tour::playNext()
{
    ++m_card;
    if (m_card == m_cards.size()) {
        print(u"tour: %1 cards, %2 faults"_s.arg(m_cards.size()).arg(m_faults));
        emit finished(m_faults);
        return;
    }
    print(u"tour: %1/%2 %3"_s.arg(m_card + 1)
              .arg(m_cards.size())
              .arg(m_cards.at(m_card)[u"title"_s].toString()));
    prepareAnswer();
    press();
}

void Tour::prepareAnswer()
{
    const QStringList names =
        m_cards.at(m_card)[u"answer"_s].toString().split(u' ', Qt::SkipEmptyParts);
    if (names.isEmpty())
        return;
    if (names == QStringList{u"cancel"_s}) {
        m_answers.append(std::nullopt);
        return;
    }
    if (names == QStringList{u"photo"_s}) {
        m_answers.append(QStringList());
        return;
    }
    const bool isPhotos = !m_cards.at(m_card)[u"photos"_s].toString().isEmpty();
    QStringList paths;
    for (const QString &name : names)
        paths.append(place(name, isPhotos ? picturesDirectory() : m_documents.path()));
    m_answers.append(paths);
}

void Tour::press()
{
    m_replies.clear();
    m_host.page().runJavaScript(u"{ const card = document.querySelectorAll('article')[%1];"
                                "card.scrollIntoView({ block: 'center' });"
                                "card.querySelector('button').click(); }"_s.arg(m_card));
    const QStringList expected =
        m_cards.at(m_card)[u"expect"_s].toString().split(u' ', Qt::SkipEmptyParts);
    waitUntil([this, expected] { return m_replies.size() >= expected.size() && isAtRest(); },
              u"%1 replies were expected"_s.arg(expected.size()),
              [this, expected] {
                  if (m_replies != expected)
                      endCard(u"expected %1"_s.arg(expected.join(u", "_s)));
                  else if (m_cards.at(m_card)[u"screen"_s].toString().isEmpty())
                      endCard({});
                  else
                      awaitScreen();
              });
}

void Tour::awaitScreen()
{
    waitUntil([this] { return topItem(m_host.window().topMostViewController()) != nullptr; },
              u"no preview appeared"_s,
              [this] {
                  if (m_cards.at(m_card)[u"share"_s].toString().isEmpty())
                      closeScreen();
                  else
                      openShareSheet();
              });
}

void Tour::openShareSheet()
{
    const UINavigationItem *item = topItem(m_host.window().topMostViewController());
    if (!item->rightBarButtonItem) {
        endCard(u"the preview has no Share button"_s);
        return;
    }
    item->rightBarButtonItem->perform();
    const auto sheetIsOpen = [this] {
        return qobject_cast<UIActivityViewController *>(m_host.window().topMostViewController()) &&
               isAtRest();
    };
    waitUntil(sheetIsOpen, u"no share sheet appeared"_s, [this] {
        m_host.window().topMostViewController()->cancelOperation();
        waitUntil(
            [this] {
                return topItem(m_host.window().topMostViewController()) != nullptr && isAtRest();
            },
            u"the share sheet stayed"_s, [this] { closeScreen(); });
    });
}

void Tour::closeScreen()
{
    const UINavigationItem *item = topItem(m_host.window().topMostViewController());
    item->leftBarButtonItem->perform();
    waitUntil(
        [this] {
            return m_host.window().topMostViewController() == &m_host.webViewController() &&
                   isAtRest();
        },
        u"the preview stayed"_s, [this] { endCard({}); });
}

void Tour::endCard(const QString &fault)
{
    if (!fault.isEmpty()) {
        ++m_faults;
        print(u"tour: FAULT: %1, got %2"_s.arg(fault, m_replies.join(u", "_s)));
    }
    QMetaObject::invokeMethod(this, &Tour::playNext, Qt::QueuedConnection);
}

void Tour::waitUntil(std::function<bool()> condition, const QString &fault,
                     std::function<void()> then)
{
    m_poll.disconnect(this);
    connect(&m_poll, &QTimer::timeout, this,
            [this, condition = std::move(condition), fault, then = std::move(then),
             deadline = QDeadlineTimer(patience)] {
                const bool holds = condition();
                if (!holds && !deadline.hasExpired())
                    return;
                m_poll.stop();
                // The connection, and with it what this function holds, goes with the next wait.
                QMetaObject::invokeMethod(
                    this,
                    [this, holds, fault, then] {
                        if (holds)
                            then();
                        else if (m_card < 0)
                            emit finished(1);
                        else
                            endCard(fault);
                    },
                    Qt::QueuedConnection);
            });
    m_poll.start();
}

bool Tour::isAtRest() const
{
    const Screenshots *screenshots = m_host.screenshots();
    return !m_host.window().isInTransition() && (!screenshots || screenshots->isIdle());
}

} // namespace zelkam
