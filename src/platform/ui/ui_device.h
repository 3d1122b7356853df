#pragma once

namespace zelkam {

/// The kind of device. The values are the platform's.
enum class UIUserInterfaceIdiom { phone = 0, pad = 1 };

/// The device the application runs on, as far as its screens care.
class UIDevice
{
public:
    static UIDevice &current();

    UIUserInterfaceIdiom userInterfaceIdiom() const { return m_idiom; }
    /// A setting of the host, phone by default. Main thread, before the first screen.
    void setUserInterfaceIdiom(UIUserInterfaceIdiom idiom) { m_idiom = idiom; }

private:
    UIDevice() = default;
    UIUserInterfaceIdiom m_idiom = UIUserInterfaceIdiom::phone;
};

} // namespace zelkam
