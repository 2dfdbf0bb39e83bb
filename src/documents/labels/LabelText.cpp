#include "documents/labels/LabelText.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

void Append(QString& line, const QString& value) {
  const bool joins = line.isEmpty() || line.endsWith(u'(') || QStringView(u".,;:)!?").contains(value.front());
  line += joins ? value : u' ' + value;
}

QString LineOf(const QList<LabelPart>& parts) {
  QString line;
  bool hasFields = false;
  bool hasValue = false;
  for (const LabelPart& part : parts) {
    const bool isText = part.kind == LabelPart::Kind::Text;
    const QString value = part.kind == LabelPart::Kind::Country ? QString() : part.value.trimmed();
    hasFields = hasFields || !isText;
    hasValue = hasValue || (!isText && !value.isEmpty());
    if (!value.isEmpty()) {
      Append(line, value);
    }
  }
  return hasFields && !hasValue ? QString() : line;
}

}  // namespace

QStringList LabelLines(QList<LabelPart> parts) {
  std::ranges::stable_sort(parts, {}, [](const LabelPart& part) { return std::tuple(part.line, part.position); });
  QStringList lines;
  QString country;
  for (auto first = parts.cbegin(); first != parts.cend();) {
    const auto end = std::find_if(first, parts.cend(), [&](const LabelPart& part) { return part.line != first->line; });
    lines += LineOf(QList<LabelPart>(first, end)).split(u'\n');
    first = end;
  }
  for (const LabelPart& part : parts) {
    if (part.kind == LabelPart::Kind::Country && country.isEmpty()) {
      country = part.value.trimmed();
    }
  }
  lines.append(country);
  lines.removeIf([](const QString& line) { return line.trimmed().isEmpty(); });
  return lines;
}

}  // namespace documents
