#pragma once

#include "documents/Export.h"
#include "documents/letter/HalfPoints.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

class QPainter;
class QTextDocument;

namespace documents {

/// A header or footer: a small letter of its own, in which fields stand for the page's number and the count of pages.
class KELDOCUMENTOS_EXPORT SectionStrip {
 public:
  /// `content` is RTF with the letter's tables; `letter` lends fonts and pictures. Lines break at `width` half-points.
  SectionStrip(const QByteArray& content, const QTextDocument& letter, int width);
  ~SectionStrip();
  SectionStrip(const SectionStrip&) = delete;
  SectionStrip& operator=(const SectionStrip&) = delete;

  void SetWidth(int width);
  /// Longer ones than any margin holds are not laid out, and show nothing.
  bool IsTooLong() const { return m_isTooLong; }
  /// In half-points; wider than its lines may be if a table or a picture is.
  double Height() const;
  double Width() const;
  /// Its fonts that this system knows nothing of, not even which one does in their place.
  QStringList MissingFonts() const;
  /// Whether it has drawings, objects or pictures that do not show.
  bool HidesObjects() const;
  /// Paints it for a page, from 1, at the painter's origin, as far down as `room` half-points.
  void Paint(QPainter& painter, int page, int pages, double room);

 private:
  HalfPointDevice m_device;
  std::unique_ptr<QTextDocument> m_text;
  bool m_isTooLong = false;
};

}  // namespace documents
