#include "framework/FormCard.h"

#include "framework/Messages.h"

namespace framework {

void TellError(const FormCard& card, const automation::Error& error, const QString& procedure) {
  if (const auto* box = std::get_if<ErrorBox>(&card.errors)) {
    ShowError(box->stringId, error);
    return;
  }
  const auto* report = std::get_if<ErrorReport>(&card.errors);
  const bool hasEntity = report != nullptr && !report->entity.isEmpty();
  const bool fresh = report != nullptr && report->freshServices;
  ReportError(error, procedure, hasEntity ? report->entity : card.name, ownComponent,
              fresh ? HostServices::Fresh() : objApi());
}

}  // namespace framework
