#include "host/desktop/RescueStrips.h"

#include "host/records/ChangeLog.h"
#include "host/records/MomentText.h"
#include "host/records/NodeCatalog.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"

#include <QApplication>
#include <QClipboard>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString subject = u"stripRescue"_s;
const QString subjectOfRest = u"stripRescueRest"_s;
constexpr qsizetype longestReason = 200;

QString Sentence(const KeptInput& input, qsizetype others) {
  QString text = u"Lo que había escrito en «%1» %2 no se guardó."_s.arg(input.title, DayAndTime(input.moment));
  if (!input.reason.isEmpty()) {
    text += u" El aviso fue: «%1»."_s.arg(input.reason.simplified().left(longestReason));
  }
  if (!input.request) {
    text += u" Este cuadro solo se abre desde otro: copie lo escrito."_s;
  } else if (!input.rows.isEmpty()) {
    text += u" Lo que había agregado a su lista no se puede volver a poner: cópielo."_s;
  }
  if (others > 0) {
    text += others == 1 ? u" Hay otro cuadro sin guardar."_s : u" Hay otros %1 cuadros sin guardar."_s.arg(others);
  }
  return text;
}

StripText::Way CopyWay(const QString& text) {
  return {.text = u"Co&piar"_s, .act = [text] { QApplication::clipboard()->setText(text); }, .stays = true};
}

}  // namespace

RescueStrips::RescueStrips(Rescue& rescue, ComponentBridge& bridge, QObject* parent)
    : QObject(parent), m_rescue(rescue), m_bridge(bridge) {
  connect(&rescue, &Rescue::Changed, this, &RescueStrips::Tell);
  connect(&rescue, &Rescue::NotPutBack, this, &RescueStrips::TellOfRest);
}

void RescueStrips::Tell() {
  if (m_rescue.Inputs().isEmpty()) {
    Q_EMIT Withdrawn(subject);
  } else {
    TellOf(m_rescue.Inputs().constFirst());
  }
}

void RescueStrips::TellOf(const KeptInput& input) {
  m_toldChange = ChangedSince(input);
  StripText strip{.subject = subject,
                  .text = Sentence(input, m_rescue.Inputs().size() - 1) + m_toldChange,
                  .tone = StripTone::Attention,
                  .stays = true};
  if (input.request) {
    strip.ways.append({u"V&olver a abrir con ello"_s, [this, input] { OpenAgain(input); }});
  }
  strip.ways.append(CopyWay(input.Text()));
  strip.ways.append({u"&Descartar"_s, [this, input] { m_rescue.Discard(input); }});
  Q_EMIT Told(strip);
}

void RescueStrips::TellOfRest(const KeptInput& input, const QList<ControlValue>& values) {
  QStringList lines;
  for (const ControlValue& value : values) {
    lines.append(u"%1: %2"_s.arg(value.label, value.shown));
  }
  lines += input.rows;
  StripText strip{.subject = subjectOfRest,
                  .text = u"De lo que había escrito en «%1» no se ha podido volver a poner: %2."_s.arg(
                      input.title, lines.join(u"; "_s).replace(u'\t', u' ')),
                  .tone = StripTone::Attention,
                  .stays = true};
  strip.ways.append(CopyWay(lines.join(u'\n')));
  strip.ways.append({u"&Entendido"_s});
  Q_EMIT Told(strip);
}

// Somebody may have changed the record since the strip was told: that is said first.
void RescueStrips::OpenAgain(const KeptInput& input) {
  if (ChangedSince(input) != m_toldChange) {
    Tell();
    return;
  }
  m_rescue.PutBackInto(input);
  Q_EMIT DialogWanted(*input.request);
  m_rescue.PutBackNothing();
  Tell();
}

QString RescueStrips::ChangedSince(const KeptInput& input) const {
  const Node* node = input.request ? FindNode(input.request->node) : nullptr;
  if (node == nullptr || input.request->action != cConstAccion().Modificar() || m_bridge.IsBusy()) {
    return {};
  }
  try {
    const std::optional<Change> change =
        LastChangeOf(m_bridge.OpenConnection(), node->table, input.request->selectedId);
    // The log knows seconds.
    return change && change->moment.toSecsSinceEpoch() >= input.moment.toSecsSinceEpoch()
               ? u" Mientras tanto %1 ha cambiado ese registro %2."_s.arg(
                     change->userName.isEmpty() ? u"alguien"_s : change->userName, DayAndTime(change->moment))
               : QString();
  } catch (const automation::Error&) {
    // Opening the dialog tells what is wrong with the database.
    return {};
  }
}

}  // namespace host
