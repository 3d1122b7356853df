#pragma once

#include <QPlainTextEdit>

class QLabel;

namespace zelkam {

/// Shows text to be read and copied: plain text whatever it holds, in a font of one width.
class TextView : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// @param isCut  only the beginning of a file is given, which the view then says
    TextView(const QString &text, bool isCut, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QLabel *m_cutNotice = nullptr;
};

} // namespace zelkam
