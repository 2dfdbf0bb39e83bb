#include "host/services/Euros.h"

#include "platform/automation/Conversion.h"

namespace host {
namespace {

// Rewrites an amount as typed into the Spanish form that the conversions take.
QString SpanishForm(const QString& typed) {
  QString text = typed.trimmed();
  if (text.endsWith(u'€')) {
    text.chop(1);
    text = text.trimmed();
  }
  const qsizetype points = text.count(u'.');
  if (text.contains(u',') || points > 1) {
    return text.remove(u'.');
  }
  const bool thousands = points == 1 && text.size() - text.indexOf(u'.') == 4;
  return thousands ? text.remove(u'.') : text.replace(u'.', u',');
}

}  // namespace

QString FormatEuros(const QVariant& amount) {
  const bool isText = amount.metaType().id() == QMetaType::QString;
  const QVariant value = isText ? QVariant(SpanishForm(amount.toString())) : amount;
  if (!value.isValid() || automation::IsNull(value) || !automation::IsNumeric(value)) {
    return automation::Text(amount);
  }
  return automation::Format(value, u"#,0.00");
}

int FilterEuroKey(int key, const QString& text, int selectionStart, int selectionLength) {
  const bool control = key > 0 && key < u' ';
  if (control || (key >= u'0' && key <= u'9')) {
    return key;
  }
  if (key != u',' && key != u'.') {
    return 0;
  }
  const qsizetype start = qBound(qsizetype(0), qsizetype(selectionStart), text.size());
  const qsizetype length = qBound(qsizetype(0), qsizetype(selectionLength), text.size() - start);
  const QString kept = text.left(start) + text.mid(start + length);
  return kept.contains(u',') ? 0 : int(u',');
}

}  // namespace host
