#include "host/mailing/window/PreviewPages.h"

#include <QPainter>

namespace host {

namespace {

// They are on paper: their colours hold in dark themes, too.
constexpr QRgb valueGround = 0xFFFDF0C8;
constexpr QRgb frame = 0xFF2F6F8F;
constexpr QRgb edge = 0xFFC4C8CA;
constexpr QRgb usedGround = 0xFFECEEF0;

constexpr double halfPointsPerMillimetre = documents::halfPointsPerInch / 25.4;

QPen Line(QRgb colour, double width, Qt::PenStyle style = Qt::SolidLine) {
  QPen pen(QColor(colour), width, style);
  pen.setCosmetic(true);
  return pen;
}

class LetterPreview : public paper::Pages {
 public:
  LetterPreview(const LetterMailing& letters, int letter, const PreviewLook& look)
      : m_look(look),
        m_painter(*letters.Filled(letter, look.tintsValues ? QColor(valueGround) : QColor()), letters.Margins()) {}

  int Count() const override { return m_painter.PageCount(); }
  const documents::Paper& Sheet() const override { return documents::UsualPaper(); }
  void Paint(QPainter& painter, int page) const override {
    m_painter.Paint(painter, page);
    if (m_look.showsEnvelope && page == 0) {
      painter.save();
      painter.setPen(Line(frame, 1, Qt::DashLine));
      painter.setBrush(Qt::NoBrush);
      painter.drawRect(QRectF(m_look.envelope.topLeft() * halfPointsPerMillimetre,
                              m_look.envelope.size() * halfPointsPerMillimetre));
      painter.restore();
    }
  }

 private:
  PreviewLook m_look;
  documents::LetterPainter m_painter;
};

/// Lets what paints a run paint one page of it.
class OnePage : public PaintedPages {
 public:
  explicit OnePage(QPainter& painter) : m_painter(painter) {}
  QPainter& Next() override { return m_painter; }

 private:
  QPainter& m_painter;
};

class SheetPreview : public paper::Pages {
 public:
  SheetPreview(const LabelMailing& labels, int sheet, const PreviewLook& look)
      : m_labels(labels), m_sheet(sheet), m_look(look) {}

  int Count() const override { return 1; }
  const documents::Paper& Sheet() const override { return documents::UsualPaper(); }
  void Paint(QPainter& painter, int /*page*/) const override {
    PaintEdges(painter);
    OnePage page(painter);
    m_labels.Paint(m_sheet, page);
  }

 private:
  bool IsUsed(int label) const {
    return m_sheet == 0 && (label < m_look.start.first || m_look.start.skipped.contains(label));
  }

  void PaintEdges(QPainter& painter) const {
    constexpr double halfPointsPerMicrometre = halfPointsPerMillimetre / documents::micrometresPerCentimetre * 10;
    const int chosen = m_labels.LabelFor(m_look.person, m_sheet);
    painter.save();
    painter.setBrush(Qt::NoBrush);
    int label = 0;
    for (const QRectF& place : LabelRectangles(m_labels.Sheet())) {
      ++label;
      const QRectF box(place.topLeft() * halfPointsPerMicrometre, place.size() * halfPointsPerMicrometre);
      if (IsUsed(label)) {
        painter.fillRect(box, QColor(usedGround));
        painter.setPen(Line(edge, 1));
        painter.drawLine(box.topLeft(), box.bottomRight());
      }
      if (m_look.showsEdges) {
        painter.setPen(Line(edge, 1));
        painter.drawRect(box);
      }
      if (label == chosen) {
        painter.setPen(Line(frame, 2));
        painter.drawRect(box);
      }
    }
    painter.restore();
  }

  const LabelMailing& m_labels;
  int m_sheet;
  PreviewLook m_look;
};

class Nothing : public paper::Pages {
 public:
  int Count() const override { return 0; }
  const documents::Paper& Sheet() const override { return documents::UsualPaper(); }
  void Paint(QPainter& /*painter*/, int /*page*/) const override {}
};

}  // namespace

std::unique_ptr<paper::Pages> PagesOfLetter(const LetterMailing& letters, int letter, const PreviewLook& look) {
  return std::make_unique<LetterPreview>(letters, letter, look);
}

std::unique_ptr<paper::Pages> PagesOfSheet(const LabelMailing& labels, int sheet, const PreviewLook& look) {
  return std::make_unique<SheetPreview>(labels, sheet, look);
}

std::unique_ptr<paper::Pages> NoPages() {
  return std::make_unique<Nothing>();
}

}  // namespace host
