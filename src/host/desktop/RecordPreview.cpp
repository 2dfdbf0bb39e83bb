#include "host/desktop/RecordPreview.h"

#include "documents/rtf/Rtf.h"
#include "host/look/Colours.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <QPainter>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// In characters.
constexpr qsizetype shownText = 600;

QString Beginning(const QString& letter) {
  QTextDocument document;
  rtf::Read(letter, document);
  QString text = document.toPlainText().remove(QChar::ObjectReplacementCharacter).trimmed();
  if (text.size() > shownText) {
    text = text.left(shownText) + QChar(0x2026);
  }
  return text;
}

}  // namespace

RecordPreview ReadPreview(adodb::Connection& connection, const Node& node, int id) {
  RecordPreview preview;
  if (node.id == cConstNodo().CartasModelo()) {
    const auto row = adodb::Execute(connection, u"SELECT Contenido FROM CartasModelo WHERE IDCartaModelo={}", id);
    preview.text = row->AtEnd() ? QString() : Beginning(automation::Text(row->Field(0)));
  } else if (node.id == cConstNodo().Etiquetas()) {
    const auto row = adodb::Execute(connection, u"SELECT * FROM ETIQUETAS WHERE IDETIQUETA={}", id);
    preview.sheet = row->AtEnd() ? std::nullopt : documents::ReadSheet(*row);
  }
  return preview;
}

SheetThumbnail::SheetThumbnail(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void SheetThumbnail::Show(const std::optional<documents::Sheet>& sheet) {
  m_sheet = sheet;
  setAccessibleName(sheet ? u"Hoja de %1 etiquetas, %2 por fila"_s.arg(sheet->totals).arg(sheet->perRow) : QString());
  setVisible(sheet.has_value());
  update();
}

QSize SheetThumbnail::sizeHint() const {
  return {fontMetrics().height() * 8, fontMetrics().height() * 8};
}

void SheetThumbnail::paintEvent(QPaintEvent* /*event*/) {
  if (!m_sheet) {
    return;
  }
  const documents::Paper& paper = documents::UsualPaper();
  const double scale = std::min((width() - 2.0) / paper.width, (height() - 2.0) / paper.height);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate((width() - scale * paper.width) / 2, 1);
  // It is a paper: white in dark themes, too.
  painter.setPen(LineColour(palette()));
  painter.setBrush(Qt::white);
  painter.drawRect(QRectF(0, 0, scale * paper.width, scale * paper.height));
  for (const QRectF& label : documents::LabelRectangles(*m_sheet)) {
    painter.drawRect(QRectF(label.topLeft() * scale, label.size() * scale));
  }
}

}  // namespace host
