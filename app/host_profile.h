#pragma once

#include <QLocale>
#include <QLockFile>
#include <QWebEngineProfile>
#include <memory>
#include <optional>

namespace zelkam {

/// Where the web view keeps cookies and what pages store.
///
/// An application keeps them from one start to the next, as on a phone. A run off screen keeps
/// nothing and starts with nothing, so that tests do not depend on each other; neither does a
/// second instance that runs at the same time, as two cannot write to one place.
class HostProfile
{
public:
    HostProfile(bool persistent, const std::optional<QLocale> &language);

    QWebEngineProfile &get() { return *m_profile; }

private:
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<QWebEngineProfile> m_profile;
};

} // namespace zelkam
