#include "host/services/ColumnWidths.h"

#include "platform/automation/Error.h"

#include <QHeaderView>
#include <QSettings>
#include <QTableView>
#include <QTreeView>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace host {
namespace {

constexpr int leastWidth = 8;
constexpr int mostWidth = 4000;

// Percent-encoding keeps the separators of the settings format out of the key.
QString SettingsKey(const QObject* grid, const QString& key, const QString& dialog) {
  const auto encoded = [](const QString& part) { return QString::fromLatin1(QUrl::toPercentEncoding(part)); };
  return u"Anchos/%1|%2|%3"_s.arg(encoded(key), encoded(dialog), encoded(grid->objectName()));
}

}  // namespace

QHeaderView& HeaderOf(QObject* grid) {
  if (grid == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  if (const auto* table = qobject_cast<QTableView*>(grid)) {
    return *table->horizontalHeader();
  }
  if (const auto* tree = qobject_cast<QTreeView*>(grid)) {
    return *tree->header();
  }
  throw automation::Error(automation::TypeMismatch);
}

void SaveColumnWidths(const QString& settingsFile, QObject* grid, const QString& key, const QString& dialog) {
  const QHeaderView& header = HeaderOf(grid);
  QStringList widths;
  for (int column = 0; column < header.count(); ++column) {
    widths.append(QString::number(header.sectionSize(column)));
  }
  QSettings settings(settingsFile, QSettings::IniFormat);
  const QString entry = SettingsKey(grid, key, dialog);
  if (settings.value(entry).toStringList() == widths) {
    return;
  }
  settings.setValue(entry, widths);
  settings.sync();
  if (settings.status() != QSettings::NoError) {
    qWarning("column widths could not be stored in %s", qUtf8Printable(settingsFile));
  }
}

void LoadColumnWidths(const QString& settingsFile, QObject* grid, const QString& key, const QString& dialog) {
  QHeaderView& header = HeaderOf(grid);
  const QSettings settings(settingsFile, QSettings::IniFormat);
  const QStringList widths = settings.value(SettingsKey(grid, key, dialog)).toStringList();
  for (int column = 0; column < qMin(header.count(), int(widths.size())); ++column) {
    const int width = widths[column].toInt();
    const bool stretched = header.stretchLastSection() && header.visualIndex(column) == header.count() - 1;
    if (width >= leastWidth && width <= mostWidth && !header.isSectionHidden(column) && !stretched) {
      header.resizeSection(column, width);
    }
  }
}

}  // namespace host
