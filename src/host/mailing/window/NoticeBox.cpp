#include "host/mailing/window/NoticeBox.h"

#include "host/look/Palettes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMap>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// More would leave no room for the list.
constexpr qsizetype mostLines = 6;

/// `one` and `several` say how many, and why.
void Count(const QList<PersonNote>& notes, const QString& one, const QString& several, PeopleFilter filter,
           QList<Notice>& notices) {
  QMap<QString, int> reasons;
  for (const PersonNote& note : notes) {
    // What is quoted of somebody tells one from another.
    ++reasons[note.reason.section(u',', 0, 0)];
  }
  for (auto reason = reasons.cbegin(); reason != reasons.cend(); ++reason) {
    const QString text =
        reason.value() == 1 ? one.arg(reason.key()) : several.arg(QString::number(reason.value()), reason.key());
    notices.append({text, Notice::Way::People, filter});
  }
}

}  // namespace

QList<Notice> NoticesOf(const MailingNotes& notes, const QStringList& faults, const QStringList& missing) {
  QList<Notice> notices;
  if (!missing.isEmpty()) {
    notices.append({u"Falta %1: se deja en blanco."_s.arg(missing.join(u" y "_s)), Notice::Way::MissingField});
  }
  Count(notes.leftOut, u"1 persona se queda fuera: %1."_s, u"%1 personas se quedan fuera: %2."_s, PeopleFilter::LeftOut,
        notices);
  Count(notes.doubtful, u"1 persona, que se imprime: %1."_s, u"%1 personas, que se imprimen: %2."_s,
        PeopleFilter::Doubtful, notices);
  if (notes.abroad > 0) {
    notices.append({notes.abroad == 1 ? u"1 va al extranjero."_s : u"%1 van al extranjero."_s.arg(notes.abroad),
                    Notice::Way::People, PeopleFilter::Abroad});
  }
  for (const QString& line : faults + notes.remarks) {
    notices.append({line});
  }
  if (notices.size() > mostLines) {
    const qsizetype further = notices.size() - mostLines + 1;
    notices.resize(mostLines - 1);
    notices.append({u"Y %1 avisos más, que se leen antes de imprimir."_s.arg(further)});
  }
  return notices;
}

NoticeBox::NoticeBox(QWidget* parent) : QFrame(parent), m_lines(new QVBoxLayout(this)) {
  setObjectName(u"avisos"_s);
  setAutoFillBackground(true);
  setPalette(StripPalette(StripTone::Hint));
  const int margin = fontMetrics().height() / 3;
  m_lines->setContentsMargins(margin * 2, margin, margin * 2, margin);
  m_lines->setSpacing(margin / 2);
  hide();
}

void NoticeBox::Show(const QList<Notice>& notices) {
  while (QLayoutItem* item = m_lines->takeAt(0)) {
    item->widget()->hide();
    item->widget()->deleteLater();
    delete item;
  }
  QStringList said;
  QWidget* before = m_before;
  for (const Notice& notice : notices) {
    auto* line = new QWidget(this);
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins({});
    auto* text = new QLabel(notice.text, line);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    row->addWidget(text, 1);
    if (notice.way != Notice::Way::None) {
      auto* way = new QPushButton(notice.way == Notice::Way::People ? u"Verlas"_s : u"Escribirlo"_s, line);
      way->setAccessibleName(u"%1: %2"_s.arg(way->text(), notice.text));
      way->setAutoDefault(false);
      row->addWidget(way, 0, Qt::AlignTop);
      setTabOrder(before, way);
      before = way;
      connect(way, &QPushButton::clicked, this, [this, notice] { Q_EMIT Followed(notice); });
    }
    m_lines->addWidget(line);
    line->show();
    said.append(notice.text);
  }
  setAccessibleName(said.join(u' '));
  setVisible(!notices.isEmpty());
}

}  // namespace host
