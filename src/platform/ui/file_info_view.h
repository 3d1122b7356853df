#pragma once

#include "platform/ui/preview_file.h"

#include <QWidget>

namespace zelkam {

/// The icon names of a file's kind, the best first.
QStringList kindIconNames(const QMimeType &type);
/// "PDF document · 1.2 MB"; without a kind or size what is known.
QString kindAndSize(const PreviewFile &file);

/// What is known about a file, for one whose content is not shown: icon, name, kind and size,
/// and the reason where there is one.
class FileInfoView : public QWidget
{
    Q_OBJECT

public:
    FileInfoView(PreviewFile file, QString problem, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PreviewFile m_file;
    QString m_problem;
};

/// Turns while a file is being read; appears only after a moment, so that a quick file does
/// not flash.
class LoadingView : public QWidget
{
    Q_OBJECT

public:
    explicit LoadingView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    int m_ticks = 0;
};

} // namespace zelkam
