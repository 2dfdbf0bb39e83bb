#pragma once

#include "labels/FieldCollection.h"

#include <QWidget>

namespace labels {

/// The label's picture in the field dialog: a paper with a grid of lines and positions, and a bar for each entry.
class LabelPreview : public QWidget {
  Q_OBJECT

 public:
  explicit LabelPreview(QWidget* parent = nullptr);

  /// The list that is drawn; borrowed.
  void Show(const FieldCollection* entries);
  /// Draws again, with the entry of that identifier in the highlight colour. 0 is none.
  void Redraw(qint32 selected);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void DrawEntries(QPainter& painter) const;

  const FieldCollection* m_entries = nullptr;
  qint32 m_selected = 0;
};

}  // namespace labels
