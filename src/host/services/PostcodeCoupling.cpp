#include "host/services/PostcodeCoupling.h"

#include "host/services/ComboFilling.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <QComboBox>
#include <QLineEdit>

#include <algorithm>

namespace host {
namespace {

constexpr qsizetype prefixLength = 2;
constexpr qsizetype completeLength = 5;

bool AllDigits(QStringView text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString PrefixOf(const QVariant& provinceId, adodb::Connection& connection) {
  const auto rows =
      adodb::Execute(connection, u"SELECT Prefijo FROM Provincias WHERE IDProvincia={}", automation::CLng(provinceId));
  return rows->AtEnd() ? QString() : automation::Text(rows->Field(0)).trimmed();
}

}  // namespace

void SelectProvinceOfPostcode(QLineEdit& postcode, QComboBox& province, adodb::Connection& connection) {
  const QString prefix = postcode.text().trimmed().left(prefixLength);
  const bool settled = province.currentIndex() >= 0 && !postcode.isModified();
  if (settled || prefix.size() < prefixLength || !AllDigits(prefix)) {
    return;
  }
  const auto rows =
      adodb::Execute(connection, u"SELECT IDProvincia FROM Provincias WHERE Eliminado=0 AND Prefijo='{}'", prefix);
  bool selected = false;
  for (; !selected && !rows->AtEnd(); rows->MoveNext()) {
    selected = SelectById(province, rows->Field(0));
  }
  postcode.setModified(false);
}

void SuggestPostcodeOfProvince(const QComboBox& province, QLineEdit& postcode, adodb::Connection& connection) {
  const QString typed = postcode.text().trimmed();
  const QVariant id = province.currentData();
  const bool complete = typed.size() >= completeLength;
  if (!id.isValid() || !automation::IsNumeric(id) || complete || !AllDigits(typed)) {
    return;
  }
  const QString prefix = PrefixOf(id, connection);
  if (prefix.size() == prefixLength && AllDigits(prefix) && !typed.startsWith(prefix)) {
    postcode.setText(prefix + typed.mid(prefixLength));
  }
}

}  // namespace host
