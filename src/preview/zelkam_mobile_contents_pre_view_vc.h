#pragma once

#include "host/plugin_reference.h"
#include "platform/foundation/url.h"
#include "platform/ui/ui_view_controller.h"

#include <memory>
#include <optional>

namespace zelkam {

struct UINavigationItem;

/// The screen that previews one local file, under a bar with the file's name, Done, and Share
/// when that is allowed.
///
/// No more than a few lie above each other: when one more comes up, the lowest goes. A page that
/// downloads many files at once would otherwise fill the memory, and keep the person tapping Done.
///
/// Make it with std::make_shared, set the three fields and `modalPresentationStyle`, and present
/// it animated. The file itself is not checked: the preview says what it makes of it.
/// Main thread only.
class ZelkamMobileContentsPreViewVC : public UIViewController
{
    Q_OBJECT

public:
    /// The nib name and the bundle are taken for callers' sake; all views are built in code.
    explicit ZelkamMobileContentsPreViewVC(std::optional<QString> nibName = std::nullopt,
                                           const Bundle *bundle = nullptr);
    explicit ZelkamMobileContentsPreViewVC(const NSCoder &coder);
    ~ZelkamMobileContentsPreViewVC() override;

    /// The plug-in on whose behalf the file is shown. The screen itself does not use it.
    PluginReference pluginObj;
    /// The file to show; the last component of its path is the title. Without one the screen
    /// stays empty, and has no Done button either.
    std::optional<URL> filePath;
    /// Whether the bar offers Share.
    bool shareOpt = false;

    void viewDidLoad() override;

    /// Builds the preview and the bar. It does so on every appearance and removes nothing, so
    /// a second appearance lays a second preview and bar over the first.
    void viewDidAppear(bool animated) override;

    /// Asks the controller that presented this screen to dismiss it; nothing happens without one.
    void onTapDone(QObject *sender);

    /// Presents the share sheet for the file, on a tablet as a popover at the sender.
    ///
    /// @param sender  the bar button that was tapped; any other object leaves the popover
    /// unanchored
    void onTapShare(QObject *sender);

    /// How many previews may lie above each other.
    static constexpr int mostPreviews = 4;

protected:
    QWidget *loadView() override;

private:
    class Sheet;

    std::shared_ptr<UINavigationItem> navigationItem();
    void removeOldestPreview();
};

} // namespace zelkam
