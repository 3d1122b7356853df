#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace zelkam::test {

inline QByteArray dataFile(const QString &name)
{
    QFile file(QStringLiteral(ZELKAM_TEST_DATA "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Gives the running test the rows of its table: the records that JSON files of tests/data hold as
/// a list below the test's name, or as the only list. A record's "name" is that of the row.
inline void addRows(std::initializer_list<const char *> files)
{
    QTest::addColumn<QJsonObject>("row");
    for (const char *file : files) {
        const auto document = QJsonDocument::fromJson(dataFile(QLatin1String(file)));
        const QJsonArray rows =
            document.isArray() ? document.array()
                               : document[QLatin1String(QTest::currentTestFunction())].toArray();
        QVERIFY2(!rows.isEmpty(), file);
        for (const QJsonValue row : rows) {
            const QString name = row[u"name"].toString(row[u"test"].toString());
            QTest::newRow(name.toUtf8().constData()) << row.toObject();
        }
    }
}

/// Gives the running test cases that are told by their names alone, each in the column "what".
inline void addCases(std::initializer_list<const char *> names)
{
    QTest::addColumn<QString>("what");
    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

/// The row of the running test. What it does not give is empty, 0 or false.
class Row
{
public:
    Row()
    {
        QFETCH(const QJsonObject, row);
        m_fields = row;
    }

    QJsonValue operator[](const char *key) const { return m_fields[QLatin1String(key)]; }
    QString text(const char *key) const { return (*this)[key].toString(); }
    std::optional<QString> textOrNone(const char *key) const
    {
        return (*this)[key].isString() ? std::optional(text(key)) : std::nullopt;
    }
    /// Each character of the text is the byte of its number.
    QByteArray bytes(const char *key) const { return text(key).toLatin1(); }
    QStringList texts(const char *key) const { return (*this)[key].toVariant().toStringList(); }
    QVariantMap map(const char *key) const { return (*this)[key].toObject().toVariantMap(); }
    int number(const char *key) const { return (*this)[key].toInt(); }
    bool is(const char *key) const { return (*this)[key].toBool(); }

private:
    QJsonObject m_fields;
};

} // namespace zelkam::test
