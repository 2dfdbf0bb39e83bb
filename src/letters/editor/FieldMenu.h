#pragma once

#include <QMenu>

class QMenuBar;

namespace letters {

/// The menu of markers, the sixth one of the menu bar, which never shows it: it opens at the pointer.
class FieldMenu : public QMenu {
  Q_OBJECT

 public:
  /// Adds itself, hidden, to the bar. Captions are string numbers until they are replaced.
  explicit FieldMenu(QMenuBar* bar);

  /// Takes away what an installation of that kind does not have; its captions are texts by then. `onlyFullNames` is an
  /// installation whose people have one name.
  void ShapeNames(bool onlyFullNames);
  void ShapeInstallation(bool velumar);

  /// The items that type markers and are shown, in their order; each belongs to the menu that it stands in.
  QList<QAction*> Fields() const;
  /// Shows the menu at a place of the screen and returns when it has gone.
  void Track(const QPoint& at);

 Q_SIGNALS:
  /// A marker was chosen, by string numbers as in FieldItem.
  void MarkerChosen(int marker, int velumarMarker);
  void CutChosen();
  void CopyChosen();
  void PasteChosen();

 private:
  QAction* Item(QStringView name) const;
  void SetCaption(QStringView name, const QString& caption);
};

}  // namespace letters
