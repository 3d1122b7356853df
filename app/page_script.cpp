#include "app/page_script.h"

#include <QFile>

static void initResources()
{
    // A static library's resources are linked in only when somebody names them.
    Q_INIT_RESOURCE(zelkam_web);
}

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

QString resourceText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The resource %s is missing.", qUtf8Printable(path));
    return QString::fromUtf8(file.readAll());
}

} // namespace

QWebEngineScript pageScript()
{
    initResources();
    const QString client = resourceText(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    const QString host = resourceText(QStringLiteral(":/zelkam/web/zelkam-mobile-host.js"));
    QWebEngineScript script;
    script.setName(QStringLiteral("ZelkamMobile"));
    // One closure for both, so that the page sees neither.
    script.setSourceCode(u"(() => {\n"_s + client + u"\n(() => {\n"_s + host +
                         u"\n})();\n})();\n"_s);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(false);
    return script;
}

} // namespace zelkam
