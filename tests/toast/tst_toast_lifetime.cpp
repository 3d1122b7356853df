#include "toast/toast_host.h"
#include "toast_test_support.h"

using namespace zelkam;
using namespace std::chrono_literals;

// What a program may do to hosts and toasts at the worst moment. The checks are few: the address
// sanitizer is the judge.
class ToastLifetimeTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void hostIsDeleted_data();
    void hostIsDeleted();
    void toastIsDeleted_data();
    void toastIsDeleted();
    void callback_data();
    void callback();
    void hostThatTookATapIsDeleted();

private:
    QPointer<QWidget> m_host;
    QString m_log;

    QPointer<QWidget> toast(const QString &name, ToastDuration duration = 1h);
    ToastArray active() { return *ToastHost::of(m_host).activeToasts(); }
};

void ToastLifetimeTest::init()
{
    test::resetToasts();
    m_log.clear();
    m_host = new QWidget;
    m_host->resize(300, 300);
    m_host->show();
}

QPointer<QWidget> ToastLifetimeTest::toast(const QString &name, ToastDuration duration)
{
    const QPointer host = m_host;
    makeToast(host, name, duration, ToastPosition::bottom, {}, {}, ToastManager::shared().style,
              [this, name](bool) { m_log += name; });
    const auto queue = ToastHost::of(host).queue();
    return queue->isEmpty() ? active().last() : queue->last();
}

void ToastLifetimeTest::hostIsDeleted_data()
{
    QTest::addColumn<QString>("moment");
    for (const char *moment : {"fading in", "shown", "fading out", "held by a finger"})
        QTest::newRow(moment) << QString::fromLatin1(moment);
}

void ToastLifetimeTest::hostIsDeleted()
{
    QFETCH(QString, moment);
    ToastManager::shared().isQueueEnabled = true;
    const QPointer first = toast(QStringLiteral("a"));
    const QPointer second = toast(QStringLiteral("b"));
    makeToastActivity(m_host);
    if (moment != QLatin1String("fading in"))
        QTRY_VERIFY(first->property(ToastKeys::timer).isValid());
    if (moment == QLatin1String("fading out"))
        hideAllToasts(m_host, true, false);
    if (moment == QLatin1String("held by a finger"))
        QTest::mousePress(first, Qt::LeftButton);
    delete m_host;
    QVERIFY(!first && !second);
    QVERIFY(!ToastManager::shared().completion.toastView);
    QTest::qWait(60);
    QCOMPARE(m_log, QString());
}

void ToastLifetimeTest::toastIsDeleted_data()
{
    QTest::addColumn<QString>("moment");
    QTest::addColumn<QString>("log");
    QTest::newRow("fading in") << "fading in"
                               << "a";
    QTest::newRow("shown") << "shown"
                           << "a";
    QTest::newRow("fading out") << "fading out"
                                << "a";
    QTest::newRow("queued") << "queued"
                            << "a";
}

void ToastLifetimeTest::toastIsDeleted()
{
    QFETCH(QString, moment);
    ToastManager::shared().isQueueEnabled = true;
    const QPointer first = toast(QStringLiteral("a"));
    const QPointer second = toast(QStringLiteral("b"));
    const QPointer third = toast(QStringLiteral("c"));
    if (moment != QLatin1String("fading in"))
        QTRY_VERIFY(first->property(ToastKeys::timer).isValid());
    if (moment == QLatin1String("fading out"))
        hideToast(m_host);
    const bool queued = moment == QLatin1String("queued");
    delete (queued ? second.data() : first.data());
    if (queued)
        hideToast(m_host);
    // The queue does not wait for a toast that is no more.
    QTRY_COMPARE(active(), ToastArray{queued ? third : second});
    QTEST(m_log, "log");
    delete m_host;
}

void ToastLifetimeTest::callback_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("log");
    QTest::newRow("shows another") << "shows another"
                                   << "new";
    QTest::newRow("hides all") << "hides all"
                               << "b";
    QTest::newRow("clears the queue") << "clears the queue"
                                      << "";
    QTest::newRow("deletes the host") << "deletes the host"
                                      << "";
    QTest::newRow("deletes the toast") << "deletes the toast"
                                       << "";
}

void ToastLifetimeTest::callback()
{
    QFETCH(QString, action);
    QPointer<QWidget> first;
    makeToast(m_host, action, 0s, ToastPosition::top, {}, {}, ToastManager::shared().style,
              [&](bool) {
                  if (action == QLatin1String("shows another"))
                      toast(QStringLiteral("new"), 0s);
                  else if (action == QLatin1String("hides all"))
                      hideAllToasts(m_host, true, true);
                  else if (action == QLatin1String("clears the queue"))
                      clearToastQueue(m_host);
                  else if (action == QLatin1String("deletes the host"))
                      delete m_host;
                  else
                      delete first;
              });
    first = active().first();
    toast(QStringLiteral("b"));
    ToastManager::shared().isQueueEnabled = true;
    toast(QStringLiteral("c"));
    ToastManager::shared().isQueueEnabled = action != QLatin1String("shows another");
    QTRY_VERIFY(!first);
    QTest::qWait(120);
    QTEST(m_log, "log");
    delete m_host;
}

void ToastLifetimeTest::hostThatTookATapIsDeleted()
{
    const QPointer first = toast(QStringLiteral("a"));
    auto *later = new QWidget;
    makeToast(later, QStringLiteral("later"));
    QTest::mouseClick(first, Qt::LeftButton);
    delete later;
    QTRY_COMPARE(m_log, QStringLiteral("a"));
    QCOMPARE(active(), ToastArray{first});
    delete m_host;
    QVERIFY(!first);
}

QTEST_MAIN(ToastLifetimeTest)
#include "tst_toast_lifetime.moc"
