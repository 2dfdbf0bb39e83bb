#pragma once

#include "documents/labels/Calibration.h"
#include "host/calibration/Printers.h"
#include "host/mailing/printing/CalibrationRecords.h"
#include "platform/adodb/Connection.h"

#include <QDialog>

#include <array>
#include <optional>

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;

namespace host {

class CalibrationPicture;

/// Measures a printer: prints the page with crosses, takes what a ruler says of it, and keeps what has to be taken
/// back.
class CalibrationDialog : public QDialog {
  Q_OBJECT

 public:
  /// Borrows the connection; `user` is who measures. `printer` is the one that is shown first, where it is there.
  CalibrationDialog(adodb::Connection& connection, const QString& user, const QString& printer, Printers printers,
                    QWidget* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int measureCount = 4;

  void BuildPrinter(QBoxLayout& layout);
  void BuildMeasures(QBoxLayout& layout);
  void BuildResult(QBoxLayout& layout);
  void BuildButtons(QBoxLayout& layout);
  PrinterTray Place() const;
  void ShowPrinter();
  void ShowTray();
  void ShowMeasures(const std::optional<KeptCalibration>& kept);
  void ShowResult();
  void PrintPage(const documents::Calibration& calibration);
  void Keep();
  void Drop();

  adodb::Connection& m_connection;
  QString m_user;
  Printers m_printers;
  QScrollArea* m_steps;
  QComboBox* m_printer;
  QComboBox* m_tray;
  QLabel* m_state;
  std::array<QLineEdit*, measureCount> m_measures = {};
  std::array<QLabel*, measureCount> m_results = {};
  QLabel* m_verdict;
  QPushButton* m_print;
  QPushButton* m_printAgain;
  QPushButton* m_drop;
  QPushButton* m_keep;
  CalibrationPicture* m_picture;
  std::optional<documents::Calibration> m_calibration;
};

}  // namespace host
