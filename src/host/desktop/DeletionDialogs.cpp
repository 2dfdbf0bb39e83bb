#include "host/desktop/DeletionDialogs.h"

#include <QMessageBox>
#include <QProgressDialog>

#include <algorithm>

namespace host {

namespace {

// A box stays smaller than the screen; the rest is in the details.
constexpr qsizetype mostNamesInABox = 10;

QString Bulleted(const QStringList& lines) {
  QStringList shown = lines.mid(0, mostNamesInABox);
  if (lines.size() > shown.size()) {
    shown.append(QStringLiteral("y %1 más").arg(lines.size() - shown.size()));
  }
  return QStringLiteral("• ") + shown.join(QStringLiteral("\n• "));
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
    lines.append(QStringLiteral("%1: %2").arg(kept.name, kept.reason));
  }
  return lines;
}

QString Question(const Node& node, const QList<DeletionTarget>& targets) {
  if (targets.size() == 1) {
    return QStringLiteral("¿Desea eliminar %1 «%2»?").arg(node.record, targets.first().name);
  }
  return QStringLiteral("¿Desea eliminar los %1 registros seleccionados de «%2»?")
      .arg(QString::number(targets.size()), node.title);
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
    information.append(QStringLiteral("Se marcarán también como eliminados: %1.").arg(JoinCounts(dependents)));
  }
  box.setInformativeText(information.join(QStringLiteral("\n\n")));
  return box.exec() == QMessageBox::Yes;
}

DeletionResult DeleteWithProgress(QWidget* parent, const QString& title, ComponentBridge& bridge, const Node& node,
                                  const QList<DeletionTarget>& targets) {
  if (targets.size() == 1) {
    return DeleteRecords(bridge, node, targets, [](int) { return true; });
  }
  QProgressDialog progress(QStringLiteral("Eliminando registros de «%1»…").arg(node.title), QStringLiteral("&Cancelar"),
                           0, static_cast<int>(targets.size()), parent);
  progress.setObjectName(QStringLiteral("progresoEliminar"));
  progress.setWindowTitle(title);
  progress.setWindowModality(Qt::WindowModal);
  return DeleteRecords(bridge, node, targets, [&progress](int done) {
    progress.setValue(done);
    return !progress.wasCanceled();
  });
}

QString DeletionHeadline(const DeletionResult& result) {
  QString text = QStringLiteral("Registros eliminados: %1.").arg(result.deleted.size());
  if (!result.kept.isEmpty()) {
    text += QStringLiteral(" Conservados: %1.").arg(result.kept.size());
  }
  if (!result.untouched.isEmpty()) {
    text += QStringLiteral(" Sin tocar por haber cancelado: %1.").arg(result.untouched.size());
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
    box.setInformativeText(QStringLiteral("No se han eliminado:\n") + Bulleted(reasons));
  }
  if (std::max(reasons.size(), result.deleted.size()) > mostNamesInABox || !result.untouched.isEmpty()) {
    box.setDetailedText(QStringLiteral("Eliminados:\n%1\n\nConservados:\n%2\n\nSin tocar:\n%3")
                            .arg(result.deleted.join(u'\n'), reasons.join(u'\n'), result.untouched.join(u'\n')));
  }
  box.exec();
}

}  // namespace host
