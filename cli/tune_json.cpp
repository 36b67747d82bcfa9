#include "cli/tune_json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace nerit::cli {

namespace {

template <class Numbers>
QJsonArray array_of(const Numbers& numbers) {
  QJsonArray a;
  for (auto n : numbers) a.append(static_cast<qint64>(n));
  return a;
}

template <class Map>
QJsonArray rows_of(const Map& map) {
  QJsonArray rows;
  for (const auto& row : map) rows.append(array_of(row));
  return rows;
}

}  // namespace

std::string tune_json(const Tune& t) {
  QJsonObject settings{
      {"rpmfaktor", t.rpmfaktor},
      {"load_type", t.load_type},
      {"drucksensor", t.drucksensor},
      {"tps_min", t.tps_min},
      {"tps_max", t.tps_max},
      {"injoffset_in", t.injoffset_in},
      {"injoffset_out", t.injoffset_out},
      {"injalt", t.injalt},
      {"injneu", t.injneu},
      {"injsizecorr", t.injsizecorr},
      {"airflowtype", t.airflowtype},
      {"aoutmax", t.aoutmax},
      {"boost_enable", t.boost_enable},
      {"boost_start", t.boost_start},
      {"boost_set", t.boost_set},
      {"zylinder", t.zylinder},
      {"injchannels", t.injchannels},
      {"map_flags", t.map_flags},
      {"seq_faktor", t.seq_faktor},
      {"accel_param", array_of(t.accel_param)},
  };
  const QJsonObject tune{
      {"settings", settings},
      {"rpm_headings", array_of(t.rpm_headings)},
      {"load_headings", array_of(t.load_headings)},
      {"rpm_points", array_of(t.axes.rpm_points)},
      {"load_points", array_of(t.axes.load_points)},
      {"correction", rows_of(t.correction)},
      {"airflow", rows_of(t.airflow)},
  };
  return QJsonDocument(tune).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

}  // namespace nerit::cli
