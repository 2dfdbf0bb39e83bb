#pragma once

#include "host/mailing/selection/Addressees.h"
#include "host/mailing/window/PeopleModel.h"

#include <QFrame>

class QVBoxLayout;

namespace host {

/// A line of what there is to know before printing.
struct Notice {
  enum class Way { None, People, MissingField };

  QString text;
  Way way = Way::None;
  PeopleFilter people = PeopleFilter::All;  ///< Where the way leads to people.
};

/// "4 personas se quedan fuera: sin dirección.": people are counted by their reasons.
QList<Notice> NoticesOf(const MailingNotes& notes, const QStringList& faults, const QStringList& missing);

/// The strip that tells beforehand who is left out and what looks wrong. It goes while there is nothing to say.
class NoticeBox : public QFrame {
  Q_OBJECT

 public:
  explicit NoticeBox(QWidget* parent = nullptr);

  void Show(const QList<Notice>& notices);
  /// Tab comes to the box from there.
  void ComeAfter(QWidget& field) { m_before = &field; }

 Q_SIGNALS:
  void Followed(const host::Notice& notice);

 private:
  QVBoxLayout* m_lines;
  QWidget* m_before = nullptr;
};

}  // namespace host
