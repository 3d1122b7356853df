#pragma once

#include "platform/foundation/url.h"
#include "platform/images/decoder.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <optional>

namespace zelkam {

struct PreviewContent;

/// The view of a preview controller: one file, or the state of reading it.
class PreviewPane : public QWidget
{
    Q_OBJECT

public:
    explicit PreviewPane(QWidget *parent = nullptr);
    ~PreviewPane() override;

    /// Reads and shows a file in place of what is shown.
    /// @param title  shown instead of the file's name where a name is shown
    void showFile(const std::optional<URL> &url, const std::optional<QString> &title);
    /// Shows that there is nothing to show.
    void showNothing();
    void pausePlayback();

signals:
    void ready();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    class FocusFrame;

    void showContent(PreviewContent content);
    QWidget *makeView(PreviewContent &content);
    void setShown(QWidget *shown);

    QPointer<QWidget> m_shown;
    FocusFrame *m_frame;
    QTimer m_patience;
    DecodeCancel m_reading;
    int m_generation = 0; ///< tells a file that is read too late that another has taken its place
};

} // namespace zelkam
