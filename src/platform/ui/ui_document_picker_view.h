#pragma once

#include "platform/ui/document_browser.h"

namespace zelkam {

class DocumentChecks;
class PickerLine;
class PickerPrimaryButton;

/// The document picker's screen. It knows what is selected; what becomes of that is its
/// controller's.
class DocumentPickerView : public DocumentBrowser
{
    Q_OBJECT

public:
    DocumentPickerView(const QList<UTType> &allowedTypes, bool allowsMultipleSelection);
    ~DocumentPickerView() override;

    /// Selects a document of the folder that is shown, as a tap does; false when it cannot be.
    bool select(const QString &name);
    QStringList selection() const;

    /// Whether the contents of selected documents are being looked at, after which some may not
    /// stay selected.
    bool isChecking() const;

    /// Shows that the selection is on its way, and takes no more input; or no longer so.
    void showOpening(bool isOpening = true);

signals:
    /// The contents of what is selected have been looked at.
    void checked();

protected:
    /// Selects a document, of which the content is looked at then, or lets it go.
    void tapDocument(const QModelIndex &document) override;
    void openDocument(const QModelIndex &document) override;

private:
    void buildFooter();
    void updateSelection();

    bool m_multiple;
    bool m_isOpening = false;
    DocumentChecks *m_checks;
    PickerLine *m_count;
    PickerIconButton *m_clear;
    PickerPrimaryButton *m_open;
};

} // namespace zelkam
