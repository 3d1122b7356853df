#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>

/// One thing that the library does, ready to be shown on a host.
struct Scene
{
    QString name;
    QString title;
    std::function<void(QWidget *host)> show;
};

const QList<Scene> &scenes();

/// A small picture to show beside a text.
QImage samplePicture();
