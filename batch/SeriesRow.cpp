#include "batch/SeriesRow.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace
{

QStringList textsOf(const QJsonValue &list)
{
    QStringList texts;
    for (const QJsonValue &text : list.toArray())
        texts << text.toString();
    return texts;
}

} // namespace

QByteArray seriesRowToJson(const SeriesRow &row)
{
    return QJsonDocument(QJsonObject{{"code", row.code},
                                     {"errors", QJsonArray::fromStringList(row.errors)},
                                     {"warnings", QJsonArray::fromStringList(row.warnings)},
                                     {"report", row.report}})
        .toJson(QJsonDocument::Compact);
}

void readSeriesRow(const QByteArray &text, SeriesRow *row)
{
    const QJsonObject read = QJsonDocument::fromJson(text).object();
    row->errors = textsOf(read.value("errors"));
    row->warnings = textsOf(read.value("warnings"));
    row->report = read.value("report").toObject();
}
