#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

/// Gives the running test its rows, each in the column "row": the list that bears the test's name
/// in a file of tests/data. What JSON cannot say is added in code.
inline void addDataRows(const QString &name)
{
    QTest::addColumn<QVariantMap>("row");
    QFile file(QFINDTESTDATA(QStringLiteral("../data/") + name));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(file.readAll(), &error);
    const auto rows = document[QLatin1String(QTest::currentTestFunction())].toArray();
    QVERIFY2(!rows.isEmpty(), qPrintable(error.errorString()));
    for (const auto &row : rows)
        QTest::newRow(qPrintable(row[QLatin1String("name")].toString()))
            << row.toObject().toVariantMap();
}
