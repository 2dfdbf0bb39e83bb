#include "letters/editor/RescueStrip.h"

#include "documents/rtf/Rtf.h"
#include "framework/Desktop.h"
#include "framework/Messages.h"
#include "letters/editor/LetterWindow.h"
#include "letters/editor/RunningCopy.h"
#include "platform/automation/Error.h"
#include "platform/text/AsItStands.h"

#include <QLabel>
#include <QPushButton>

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {

namespace {

void TellNotKept(const QString& what) {
  Desktop::Current().Beep();
  ShowText(
      what +
          u"\n\nTampoco se puede conservar en la carpeta «%1», así que el editor sigue abierto. Libere espacio en el "
          "disco y vuelva a guardar, o copie el texto a otro programa."_s.arg(RescueFolder()),
      vbCritical);
}

}  // namespace

RescueStrip::RescueStrip(LetterWindow& window) : m_window(window), m_copy(new RunningCopy(window.rtfCarta)) {
  window.cmdRecuperar->hide();
  window.cmdDescartar->hide();
  window.lblAviso->hide();
  QObject::connect(m_copy, &RunningCopy::Tried, window.lblAviso, [label = window.lblAviso](bool kept) {
    label->setText(u"Los cambios no se conservan: guarde la carta."_s);
    label->setToolTip(texts::AsItStands(u"No se puede escribir en la carpeta «%1»."_s.arg(RescueFolder())));
    label->setVisible(!kept);
  });
}

void RescueStrip::Offer(qint32 record) {
  m_offered = FindRescued(record);
  m_taken = false;
  m_window.cmdRecuperar->setVisible(m_offered.has_value());
  m_window.cmdDescartar->setVisible(m_offered.has_value());
  if (m_offered) {
    const QString when = m_offered->when.toString(u"dd/MM/yyyy HH:mm"_s);
    m_window.cmdRecuperar->setText(u"Recuperar la carta sin guardar del %1"_s.arg(when));
    m_window.cmdRecuperar->setToolTip(texts::AsItStands(m_offered->name));
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

void RescueStrip::Watch(qint32 record, const QString& name) {
  m_copy->Watch(record, name);
}

void RescueStrip::GiveUp() {
  m_copy->Drop();
}

bool RescueStrip::Guard(qint32 record, const QString& name, const std::function<void()>& store) {
  try {
    store();
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    if (Keep(record, name)) {
      throw;
    }
    TellNotKept(u"No se ha podido guardar la carta. %1"_s.arg(error.Description()));
    return false;
  }
  m_copy->Drop();
  if (m_taken) {
    Discard(*m_offered);
  }
  return true;
}

bool RescueStrip::KeepChanged(qint32 record, const QString& name) {
  if (!m_window.rtfCarta->document()->isModified() || Keep(record, name)) {
    return true;
  }
  TellNotKept(u"La carta tiene cambios sin guardar."_s);
  return false;
}

bool RescueStrip::Keep(qint32 record, const QString& name) {
  if (!Rescue(rtf::Write(*m_window.rtfCarta->document()), record, name)) {
    return false;
  }
  m_copy->Drop();
  return true;
}

}  // namespace letters
