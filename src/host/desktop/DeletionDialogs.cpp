#include "host/desktop/DeletionDialogs.h"

#include "host/services/PlainBox.h"

#include <QProgressDialog>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// A box stays smaller than the screen; the rest is in the details.
constexpr qsizetype mostLinesInABox = 10;

QString Bulleted(const QStringList& lines) {
  QStringList shown = lines.mid(0, mostLinesInABox);
  if (lines.size() > shown.size()) {
    shown.append(u"y %1 más"_s.arg(lines.size() - shown.size()));
  }
  return u"• "_s + shown.join(u"\n• "_s);
}

QStringList Names(const QList<DeletionTarget>& targets) {
  QStringList names;
  for (const DeletionTarget& target : targets) {
    names.append(target.name);
  }
  return names;
}

QStringList Reasons(const QList<KeptRecord>& kept) {
  QStringList lines;
  for (const KeptRecord& record : kept) {
    lines.append(u"%1: %2"_s.arg(record.name, record.reason));
  }
  return lines;
}

QString Question(const Node& node, const DeletionPlan& plan) {
  const qsizetype going = plan.going.size();
  const qsizetype all = going + plan.staying.size();
  if (all == 1) {
    return u"¿Desea eliminar %1 «%2»?"_s.arg(node.record, plan.going.constFirst().name);
  }
  return going == all
             ? u"¿Desea eliminar los %1 registros seleccionados de «%2»?"_s.arg(QString::number(all), node.title)
             : u"¿Desea eliminar %1 de los %2 registros seleccionados de «%3»?"_s.arg(QString::number(going),
                                                                                      QString::number(all), node.title);
}

void AddDetails(QMessageBox& box, const QStringList& going, const QStringList& staying) {
  if (std::max(going.size(), staying.size()) > mostLinesInABox) {
    box.setDetailedText(u"Se eliminan:\n%1\n\nSe conservan:\n%2"_s.arg(going.join(u'\n'), staying.join(u'\n')));
  }
}

bool Confirm(QWidget* parent, const QString& title, const Node& node, const DeletionPlan& plan) {
  PlainBox box(QMessageBox::Question, title, Question(node, plan), QMessageBox::Yes | QMessageBox::No, parent);
  box.setDefaultButton(QMessageBox::No);
  const QStringList going = Names(plan.going);
  const QStringList staying = Reasons(plan.staying);
  QStringList information;
  if (going.size() + staying.size() > 1) {
    information.append(Bulleted(going));
  }
  if (!plan.dependents.isEmpty()) {
    information.append(u"Se marcarán también como eliminados: %1."_s.arg(JoinCounts(plan.dependents)));
  }
  if (!staying.isEmpty()) {
    information.append(u"Se conservan:\n"_s + Bulleted(staying));
  }
  box.SetFurtherText(information.join(u"\n\n"_s));
  AddDetails(box, going, staying);
  return box.exec() == QMessageBox::Yes;
}

void TellThatNothingGoes(QWidget* parent, const QString& title, const Node& node, const QList<KeptRecord>& staying) {
  const QString text = staying.size() == 1
                           ? u"No se puede eliminar %1 «%2»."_s.arg(node.record, staying.constFirst().name)
                           : u"No se puede eliminar ninguno de los %1 registros seleccionados de «%2»."_s.arg(
                                 QString::number(staying.size()), node.title);
  PlainBox box(QMessageBox::Information, title, text, QMessageBox::Ok, parent);
  if (staying.size() == 1) {
    QString reason = staying.constFirst().reason;
    box.SetFurtherText(reason.replace(0, 1, reason.at(0).toUpper()) + u'.');
  } else {
    box.SetFurtherText(Bulleted(Reasons(staying)));
  }
  AddDetails(box, {}, Reasons(staying));
  box.exec();
}

void TellOfFailures(QWidget* parent, const QString& title, const DeletionResult& result) {
  if (result.kept.isEmpty()) {
    return;
  }
  PlainBox box(QMessageBox::Warning, title, DeletionHeadline(result), QMessageBox::Ok, parent);
  box.SetFurtherText(u"No se han eliminado:\n"_s + Bulleted(Reasons(result.kept)));
  AddDetails(box, result.deleted, Reasons(result.kept));
  box.exec();
}

// Shows itself when the work takes long. Enter must not end it: that is what answered the question before.
class Progress : public QProgressDialog {
 public:
  Progress(QWidget* parent, const QString& title, const QString& text, qsizetype count)
      : QProgressDialog(text, {}, 0, static_cast<int>(count), parent) {
    setObjectName(u"deletionProgress"_s);
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    auto* cancel = new QPushButton(u"&Cancelar"_s);
    setCancelButton(cancel);
    cancel->setAutoDefault(false);
  }

  GoOn Steps() {
    return [this](int done) {
      setValue(done);
      return !wasCanceled();
    };
  }
};

}  // namespace

std::optional<DeletionResult> DeleteAsTheUserSays(QWidget* parent, ComponentBridge& bridge, const Node& node,
                                                  const QList<DeletionTarget>& targets) {
  const QString& title = bridge.Session().title;
  std::optional<DeletionPlan> plan;
  {
    Progress progress(parent, title, u"Comprobando qué registros se pueden eliminar…"_s, targets.size());
    plan = PlanDeletion(bridge, node, targets, progress.Steps());
  }
  if (!plan || bridge.IsEnding()) {
    return std::nullopt;
  }
  if (plan->going.isEmpty()) {
    TellThatNothingGoes(parent, title, node, plan->staying);
    return std::nullopt;
  }
  if (!Confirm(parent, title, node, *plan)) {
    return std::nullopt;
  }
  DeletionResult result;
  {
    Progress progress(parent, title, u"Eliminando registros de «%1»…"_s.arg(node.title), plan->going.size());
    result = DeleteRecords(bridge, node, plan->going, progress.Steps());
  }
  if (!bridge.IsEnding()) {
    TellOfFailures(parent, title, result);
  }
  result.kept += plan->staying;
  return result;
}

void ShowRefusedRecoveries(QWidget* parent, const QString& title, const QList<Recovery>& recoveries) {
  QList<KeptRecord> refused;
  for (const Recovery& recovery : recoveries) {
    if (!recovery.refusal.isEmpty()) {
      refused.append({recovery.name, recovery.refusal});
    }
  }
  if (refused.isEmpty()) {
    return;
  }
  PlainBox box(QMessageBox::Warning, title, RecoveryHeadline(recoveries), QMessageBox::Ok, parent);
  box.SetFurtherText(u"No se han recuperado:\n"_s + Bulleted(Reasons(refused)));
  AddDetails(box, {}, Reasons(refused));
  box.exec();
}

QString DeletionHeadline(const DeletionResult& result) {
  QString text = u"Registros eliminados: %1."_s.arg(result.deleted.size());
  if (!result.kept.isEmpty()) {
    text += u" Conservados: %1."_s.arg(result.kept.size());
  }
  if (!result.untouched.isEmpty()) {
    text += u" Sin tocar por haber cancelado: %1."_s.arg(result.untouched.size());
  }
  return text;
}

QString RecoveryHeadline(const QList<Recovery>& recoveries) {
  const auto refused =
      std::ranges::count_if(recoveries, [](const Recovery& recovery) { return !recovery.refusal.isEmpty(); });
  QString text = u"Registros recuperados: %1."_s.arg(recoveries.size() - refused);
  if (refused > 0) {
    text += u" Siguen eliminados: %1."_s.arg(refused);
  }
  return text;
}

}  // namespace host
