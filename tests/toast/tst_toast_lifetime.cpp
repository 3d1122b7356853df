#include "support/data_table.h"
#include "toast_test_support.h"

using namespace zelkam;
using namespace zelkam::test;

// What a program may do to hosts and toasts at the worst moment. The checks are few: the address
// sanitizer is the judge.
class ToastLifetimeTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        resetToasts();
        m_host = new Host;
        m_host->show();
    }

    void cleanup() { delete m_host; }

    void hostIsDeleted_data() { addCases({"fading in", "shown", "fading out", "held", "dropped"}); }

    void hostIsDeleted()
    {
        QFETCH(QString, what);
        ToastManager::shared().isQueueEnabled = true;
        bool called = false;
        makeToast(m_host, u"a"_s, 1h, ToastPosition::top, {}, {}, {}, [&](bool) { called = true; });
        const QPointer first = m_host->active().first();
        const QPointer second = m_host->toast(u"b"_s);
        makeToastActivity(m_host);
        if (what != u"fading in")
            QTRY_VERIFY(timerOf(first));
        if (what == u"fading out")
            hideAllToasts(m_host, true, false);
        if (what == u"held")
            QTest::mousePress(first, Qt::LeftButton);
        if (what == u"dropped")
            clearToastQueue(m_host);
        delete m_host;
        QVERIFY(!first && !second && !ToastManager::shared().completion.toastView);
        QTest::qWait(60);
        QVERIFY(!called);
    }

    void toastIsDeleted_data() { addCases({"fading in", "shown", "fading out", "queued"}); }

    void toastIsDeleted()
    {
        QFETCH(QString, what);
        ToastManager::shared().isQueueEnabled = true;
        QWidget *first = m_host->toast(u"a"_s);
        QWidget *second = m_host->toast(u"b"_s);
        QWidget *third = m_host->toast(u"c"_s);
        if (what != u"fading in")
            QTRY_VERIFY(timerOf(first));
        if (what == u"fading out" || what == u"queued")
            hideToast(m_host);
        const bool queued = what == u"queued";
        delete (queued ? second : first);
        // The queue does not wait for a toast that is no more.
        QTRY_COMPARE(m_host->active(), ToastArray{queued ? third : second});
        QCOMPARE(m_host->log, u"a."_s);
    }

    void callback_data()
    {
        addCases({"shows another", "hides all", "clears the queue", "deletes the host",
                  "deletes the toast"});
    }

    void callback()
    {
        QFETCH(QString, what);
        QPointer<QWidget> first;
        makeToast(m_host, what, 0s, ToastPosition::top, {}, {}, {}, [&](bool) {
            ToastManager::shared().isQueueEnabled = false;
            if (what == u"shows another")
                m_host->toast(u"new"_s, 0s);
            else if (what == u"hides all")
                hideAllToasts(m_host, true, true);
            else if (what == u"clears the queue")
                clearToastQueue(m_host);
            else if (what == u"deletes the host")
                delete m_host;
            else
                delete first;
        });
        first = m_host->active().first();
        m_host->toast(u"b"_s);
        ToastManager::shared().isQueueEnabled = true;
        const QPointer third = m_host->toast(u"c"_s);
        QTRY_VERIFY(!first);
        QTest::qWait(150);
        const bool dropsThird = what == u"hides all" || what == u"clears the queue" || !m_host;
        QCOMPARE(third.isNull(), dropsThird);
        if (m_host)
            QCOMPARE(m_host->log, what == u"shows another" ? u"new."_s
                                  : what == u"hides all"   ? u"b."_s
                                                           : QString());
    }

private:
    QPointer<Host> m_host;
};

QTEST_MAIN(ToastLifetimeTest)
#include "tst_toast_lifetime.moc"
