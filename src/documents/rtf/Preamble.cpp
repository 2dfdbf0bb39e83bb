#include "documents/rtf/Preamble.h"

#include "documents/rtf/Properties.h"

#include <QTextDocument>
#include <QTextFrame>

namespace rtf {

PreambleData NewPreamble() {
  constexpr int spanish = 3082;
  PreambleData data;
  data.words.Put(*FindKeyword("deflang"), true, spanish);
  return data;
}

Preamble PreambleOf(const QTextDocument& document) {
  const QVariant carried = document.rootFrame()->frameFormat().property(PreambleProperty);
  return carried.isValid() ? carried.value<Preamble>() : Preamble{std::make_shared<const PreambleData>(NewPreamble())};
}

void SetPreamble(QTextDocument& document, PreambleData data) {
  QTextFrameFormat root = document.rootFrame()->frameFormat();
  root.setProperty(PreambleProperty,
                   QVariant::fromValue(Preamble{std::make_shared<const PreambleData>(std::move(data))}));
  document.rootFrame()->setFrameFormat(root);
}

}  // namespace rtf
