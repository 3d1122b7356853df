#pragma once

#include <QAbstractButton>
#include <QList>
#include <QScrollArea>
#include <QString>

namespace zelkam {

/// A folder from which people set out.
struct DocumentPlace
{
    QString name;
    QString path;
    QString iconName;
};

/// The person's own folders, drives that were plugged in, and the device as a whole. Asks no
/// drive anything, so that one that does not answer holds up nothing.
QList<DocumentPlace> documentPlaces();

/// The mount points for people in the text of /proc/self/mounts.
QStringList removableMounts(const QByteArray &mounts);

/// The list of places.
class DocumentPlacesList : public QScrollArea
{
    Q_OBJECT

public:
    explicit DocumentPlacesList(const QList<DocumentPlace> &places, QWidget *parent = nullptr);

    /// Marks the place that a folder is. The list's focus goes there, or to the first place.
    void setCurrent(const QString &path);

signals:
    void chosen(const QString &path);

private:
    QList<QAbstractButton *> m_rows;
    QList<DocumentPlace> m_places;
};

} // namespace zelkam
