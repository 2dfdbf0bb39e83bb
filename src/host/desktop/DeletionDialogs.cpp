#include "host/desktop/DeletionDialogs.h"

#include <QMessageBox>
#include <QProgressDialog>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// A box stays smaller than the screen; the rest is in the details.
constexpr qsizetype mostNamesInABox = 10;

QString Bulleted(const QStringList& lines) {
  QStringList shown = lines.mid(0, mostNamesInABox);
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

QStringList Reasons(const DeletionResult& result) {
  QStringList lines;
  for (const KeptRecord& kept : result.kept) {
    lines.append(u"%1: %2"_s.arg(kept.name, kept.reason));
  }
  return lines;
}

QString Question(const Node& node, const QList<DeletionTarget>& targets) {
  if (targets.size() == 1) {
    return u"¿Desea eliminar %1 «%2»?"_s.arg(node.record, targets.first().name);
  }
  return u"¿Desea eliminar los %1 registros seleccionados de «%2»?"_s.arg(QString::number(targets.size()), node.title);
}

}  // namespace

bool ConfirmDeletion(QWidget* parent, const QString& title, const Node& node, const QList<DeletionTarget>& targets,
                     const QList<RowCount>& dependents) {
  QMessageBox box(QMessageBox::Question, title, Question(node, targets), QMessageBox::Yes | QMessageBox::No, parent);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::No);
  QStringList information;
  if (targets.size() > 1) {
    information.append(Bulleted(Names(targets)));
  }
  if (!dependents.isEmpty()) {
    information.append(u"Se marcarán también como eliminados: %1."_s.arg(JoinCounts(dependents)));
  }
  box.setInformativeText(information.join(u"\n\n"_s));
  return box.exec() == QMessageBox::Yes;
}

DeletionResult DeleteWithProgress(QWidget* parent, const QString& title, ComponentBridge& bridge, const Node& node,
                                  const QList<DeletionTarget>& targets) {
  if (targets.size() == 1) {
    return DeleteRecords(bridge, node, targets, [](int) { return true; });
  }
  QProgressDialog progress(u"Eliminando registros de «%1»…"_s.arg(node.title), u"&Cancelar"_s, 0,
                           static_cast<int>(targets.size()), parent);
  progress.setObjectName(u"deletionProgress"_s);
  progress.setWindowTitle(title);
  progress.setWindowModality(Qt::WindowModal);
  return DeleteRecords(bridge, node, targets, [&progress](int done) {
    progress.setValue(done);
    return !progress.wasCanceled();
  });
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

void ShowDeletionSummary(QWidget* parent, const QString& title, const DeletionResult& result) {
  if (result.kept.isEmpty() && result.deleted.size() + result.untouched.size() <= 1) {
    return;
  }
  QMessageBox box(result.kept.isEmpty() ? QMessageBox::Information : QMessageBox::Warning, title,
                  DeletionHeadline(result), QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  const QStringList reasons = Reasons(result);
  if (!reasons.isEmpty()) {
    box.setInformativeText(u"No se han eliminado:\n"_s + Bulleted(reasons));
  }
  if (std::max(reasons.size(), result.deleted.size()) > mostNamesInABox || !result.untouched.isEmpty()) {
    box.setDetailedText(u"Eliminados:\n%1\n\nConservados:\n%2\n\nSin tocar:\n%3"_s.arg(
        result.deleted.join(u'\n'), reasons.join(u'\n'), result.untouched.join(u'\n')));
  }
  box.exec();
}

}  // namespace host
