#include "platform/ui/ui_document_picker_places.h"

#include "platform/foundation/file_name.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_controls.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <algorithm>

namespace zelkam {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("DocumentPlaces", text);
}

/// A mount point as /proc/self/mounts writes it, with blanks and the like as octal numbers.
QByteArray unescaped(const QByteArray &text)
{
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool isOctal = false;
        const uint code = text.at(i) == '\\' ? text.mid(i + 1, 3).toUInt(&isOctal, 8) : 0;
        result += isOctal ? char(code) : text.at(i);
        i += isOctal ? 3 : 0;
    }
    return result;
}

} // namespace

QStringList removableMounts(const QByteArray &mounts)
{
    QStringList paths;
    for (const QByteArray &line : mounts.split('\n')) {
        const QString path = decodeFileName(unescaped(line.split(' ').value(1)));
        if (path.startsWith(u"/media/") || path.startsWith(u"/run/media/") ||
            path.startsWith(u"/mnt/"))
            paths.append(path);
    }
    return paths;
}

QList<DocumentPlace> documentPlaces()
{
    struct Known
    {
        QStandardPaths::StandardLocation location;
        const char *name;
        const char *iconName;
    };
    static constexpr Known known[] = {
        {QStandardPaths::HomeLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Home"), "go-home"},
        {QStandardPaths::DocumentsLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Documents"),
         "folder-documents"},
        {QStandardPaths::DownloadLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Downloads"),
         "folder-download"},
        {QStandardPaths::PicturesLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Pictures"),
         "folder-pictures"},
        {QStandardPaths::MusicLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Music"),
         "folder-music"},
        {QStandardPaths::MoviesLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Videos"),
         "folder-videos"},
        {QStandardPaths::DesktopLocation, QT_TRANSLATE_NOOP("DocumentPlaces", "Desktop"),
         "user-desktop"},
    };
    QList<DocumentPlace> places;
    for (const Known &place : known) {
        const QString path = QStandardPaths::writableLocation(place.location);
        const auto isThere = [&path](const DocumentPlace &other) { return other.path == path; };
        // Where a folder of its own is missing, the system names the home folder again.
        if (QDir(path).exists() && std::none_of(places.cbegin(), places.cend(), isThere))
            places.append({translated(place.name), path, QString::fromLatin1(place.iconName)});
    }
    QFile mounts(QStringLiteral("/proc/self/mounts"));
    if (mounts.open(QIODevice::ReadOnly)) {
        for (const QString &path : removableMounts(mounts.readAll()))
            places.append({displayName(path.section(u'/', -1)), path,
                           QStringLiteral("drive-removable-media-symbolic")});
    }
    places.append({translated(QT_TRANSLATE_NOOP("DocumentPlaces", "This device")),
                   QStringLiteral("/"), QStringLiteral("drive-harddisk-symbolic")});
    return places;
}

DocumentPlacesList::DocumentPlacesList(const QList<DocumentPlace> &places, QWidget *parent)
    : QScrollArea(parent), m_places(places)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setAccessibleName(tr("Places"));
    auto *list = new QWidget;
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins(0, metrics::grid, 0, metrics::grid);
    column->setSpacing(0);
    for (const DocumentPlace &place : places) {
        auto *row = new PickerRow(place.iconName, place.name, list);
        row->setCheckable(true);
        column->addWidget(row);
        m_rows.append(row);
        connect(row, &QAbstractButton::clicked, this,
                [this, path = place.path] { emit chosen(path); });
    }
    column->addStretch();
    setWidget(list);
    viewport()->setAutoFillBackground(false);
    list->setAutoFillBackground(false);
}

void DocumentPlacesList::setCurrent(const QString &path)
{
    setFocusProxy(m_rows.first());
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        m_rows.at(i)->setChecked(m_places.at(i).path == path);
        if (m_rows.at(i)->isChecked())
            setFocusProxy(m_rows.at(i));
    }
}

} // namespace zelkam
