#pragma once

#include "documents/labels/SheetPlaces.h"

#include <QWidget>

#include <optional>

namespace host {

/// The first sheet as a picture: a click begins at a label, Ctrl and a click leave out one that is used or torn. With
/// the keyboard arrows move, Enter begins, Space leaves out.
class SheetStartPicture : public QWidget {
  Q_OBJECT

 public:
  explicit SheetStartPicture(QWidget* parent = nullptr);

  /// Labels that the sheet does not have are taken out of the start. Nothing shows an empty paper.
  void Show(const std::optional<documents::Sheet>& sheet, const documents::SheetStart& start);
  const documents::SheetStart& Start() const { return m_start; }
  void SetFirst(int label);

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// By the user.
  void Changed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool event(QEvent* event) override;

 private:
  /// From micrometres to pixels.
  QTransform Scale() const;
  /// The label at a point, 0 for none.
  int LabelAt(QPointF point) const;
  void Begin(int label);
  void Skip(int label);
  void MoveTo(int label);
  void DrawLabel(QPainter& painter, int label, const QRectF& box) const;
  QString TextOf(int label) const;
  void Tell();

  std::optional<documents::Sheet> m_sheet;
  documents::SheetStart m_start;
  int m_current = 1;
};

}  // namespace host
