#include "letters/editor/RescueStrip.h"

#include "documents/rtf/Rtf.h"
#include "framework/Desktop.h"
#include "framework/Messages.h"
#include "letters/editor/LetterWindow.h"

#include <QPushButton>

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {

RescueStrip::RescueStrip(LetterWindow& window) : m_window(window) {
  window.cmdRecuperar->hide();
  window.cmdDescartar->hide();
}

void RescueStrip::Offer(qint32 record) {
  m_offered = FindRescued(record);
  m_taken = false;
  m_window.cmdRecuperar->setVisible(m_offered.has_value());
  m_window.cmdDescartar->setVisible(m_offered.has_value());
  if (m_offered) {
    const QString when = m_offered->when.toString(u"dd/MM/yyyy HH:mm"_s);
    m_window.cmdRecuperar->setText(u"Recuperar la carta sin guardar del %1"_s.arg(when));
    m_window.cmdRecuperar->setToolTip(m_offered->name);
  }
}

void RescueStrip::Take() {
  const rtf::Report report = m_window.rtfCarta->ReplaceAll(ReadRescued(*m_offered));
  if (report.outcome == rtf::Outcome::Refused) {
    ShowText(u"No se puede recuperar la carta. %1"_s.arg(report.reason), vbExclamation);
    return;
  }
  m_taken = true;
  m_window.cmdRecuperar->hide();
  m_window.cmdDescartar->hide();
}

void RescueStrip::Drop() {
  Discard(*m_offered);
  m_window.cmdRecuperar->hide();
  m_window.cmdDescartar->hide();
}

void RescueStrip::Guard(qint32 record, const QString& name, const std::function<void()>& store) {
  try {
    store();
  } catch (...) {
    Keep(record, name);
    throw;
  }
  if (m_taken) {
    Discard(*m_offered);
  }
}

void RescueStrip::KeepChanged(qint32 record, const QString& name) const {
  if (m_window.rtfCarta->document()->isModified()) {
    Keep(record, name);
  }
}

void RescueStrip::Keep(qint32 record, const QString& name) const {
  Rescue(rtf::Write(*m_window.rtfCarta->document()), record, name);
}

}  // namespace letters
