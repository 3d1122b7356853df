#pragma once

#include <QLineEdit>

class QLabel;

namespace zelkam {

class PickerPrimaryButton;
class PickerRow;

/// A line to type into, on a round ground and as high as a thumb needs.
class PickerField : public QLineEdit
{
    Q_OBJECT

public:
    /// @param name  what it is for; shown as long as it is empty
    explicit PickerField(const QString &name, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A field to search in.
class PickerSearchField : public PickerField
{
    Q_OBJECT

public:
    explicit PickerSearchField(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

signals:
    /// The person went on to the list.
    void leftDownwards();
};

/// A field for the name of a file or a folder, and below it why a name will not do.
class NameField : public QWidget
{
    Q_OBJECT

public:
    explicit NameField(const QString &label, QWidget *parent = nullptr);

    QString name() const { return m_field->text(); }
    void setName(const QString &name);
    /// Gives the field the focus and selects the name, but not its extension.
    void edit();
    bool isEdited() const { return m_field->hasFocus(); }
    /// A sentence, which goes as soon as the name is changed; empty for none.
    void showProblem(const QString &problem);

private:
    PickerField *m_field;
    QLabel *m_problem;
};

/// A row with which a person makes a folder: first a button, and after a tap a field for the name.
class NewFolderRow : public QWidget
{
    Q_OBJECT

public:
    explicit NewFolderRow(QWidget *parent = nullptr);

    bool isOpen() const;
    void setOpen(bool open);
    NameField &field() { return *m_field; }

signals:
    /// The button beside the field was pressed.
    void accepted();

private:
    PickerRow *m_row;
    QWidget *m_entry;
    NameField *m_field;
};

} // namespace zelkam
