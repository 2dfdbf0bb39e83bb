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

// The widths that a grid was given, until the user changes them; kept in its header.
constexpr const char* givenWidths = "KelAnchos";

// A last column that takes what is left changes with the window, which is no choice of the user's.
bool IsStretched(const QHeaderView& header, int column) {
  return header.stretchLastSection() && header.visualIndex(column) == header.count() - 1;
}

QStringList ChosenWidths(const QHeaderView& header) {
  QStringList widths;
  for (int column = 0; column < header.count(); ++column) {
    widths.append(IsStretched(header, column) ? QString() : QString::number(header.sectionSize(column)));
  }
  return widths;
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
  const QStringList widths = ChosenWidths(header);
  if (header.property(givenWidths).toStringList() == widths) {
    return;
  }
  QSettings settings(settingsFile, QSettings::IniFormat);
  settings.setValue(SettingsKey(grid, key, dialog), widths);
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
    if (width >= leastWidth && width <= mostWidth && !header.isSectionHidden(column) && !IsStretched(header, column)) {
      header.resizeSection(column, width);
    }
  }
  header.setProperty(givenWidths, ChosenWidths(header));
}

}  // namespace host
