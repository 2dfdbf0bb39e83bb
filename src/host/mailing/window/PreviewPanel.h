#pragma once

#include "host/mailing/window/PreviewPages.h"

#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QMenu;
class QSpinBox;
class QToolButton;

namespace paper {
class PageView;
}

namespace host {

/// The letters or sheets before they are printed, one at a time.
class PreviewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewPanel(QWidget* parent = nullptr);
  ~PreviewPanel() override;

  /// Shows what was read, at the person who was in sight.
  void Show(std::shared_ptr<const LetterMailing> letters);
  void Show(std::shared_ptr<const LabelMailing> labels, const documents::SheetStart& start);
  /// Shows words in the place of pages.
  void ShowText(const QString& text);
  /// Shows somebody's letter or label.
  void GoTo(int person);
  /// Puts the ways of leafing and of showing into a menu.
  void FillMenu(QMenu& menu);

  int PartCount() const { return m_work == nullptr ? 0 : m_work->Count(); }

 Q_SIGNALS:
  /// The user leafed to the letter of that person.
  void PersonReached(int person);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddBar();
  void AddSwitch(QHBoxLayout& bar, QAction*& action, const QString& text, const QString& tip, const char* name,
                 bool PreviewLook::*look);
  void AddLeaf(QHBoxLayout& bar, const char* name, const QString& text, const QString& icon, const QString& brief,
               const QKeySequence& key, const std::function<int()>& target);
  void SetWork(const Mailing* work);
  void Leaf(int part);
  void ShowPart();
  void ShowState();
  void ChooseZoom(int choice);
  void AskForEnvelope();

  std::shared_ptr<const LetterMailing> m_letters;
  std::shared_ptr<const LabelMailing> m_labels;
  const Mailing* m_work = nullptr;  ///< One of them.
  std::unique_ptr<paper::Pages> m_pages;
  PreviewLook m_look;
  int m_part = 0;
  paper::PageView* m_view;
  QLabel* m_text;
  QSpinBox* m_number = nullptr;
  QLabel* m_count;
  QLabel* m_name;
  QComboBox* m_zoom;
  QList<QAction*> m_leaves;
  QAction* m_tint = nullptr;
  QAction* m_envelope = nullptr;
  QAction* m_edges = nullptr;
};

}  // namespace host
