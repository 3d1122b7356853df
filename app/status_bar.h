#pragma once

#include <QString>
#include <QWidget>

class QVariantAnimation;

namespace zelkam {

/// The strip at the top of the device's screen: which page is shown, and whether the network is
/// in use. It lies above every screen of the application, so that no page can draw over it.
class StatusBar : public QWidget
{
    Q_OBJECT

public:
    static constexpr int height = 28; ///< in points

    explicit StatusBar(QWidget *parent = nullptr);

    /// What the page is known by; its server, as a rule.
    void setPageName(const QString &name);

    /// Shows the turning mark of network activity.
    void setActive(bool active);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_pageName;
    QVariantAnimation *m_turn;
    bool m_active = false;
};

} // namespace zelkam
