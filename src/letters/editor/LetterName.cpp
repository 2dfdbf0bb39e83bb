#include "letters/editor/LetterName.h"

#include "framework/Desktop.h"
#include "framework/Messages.h"
#include "resources/StringTable.h"

using resources::LoadResString;
using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {

namespace {

constexpr qsizetype longestName = 50;

bool WantsToType(const QString& problem) {
  Desktop::Current().Beep();
  return ShowText(problem + LoadResString(3110), vbYesNo + vbExclamation) != vbNo;
}

}  // namespace

std::optional<QString> AskName(int prompt) {
  for (;;) {
    const QString name =
        Desktop::Current().InputBox(LoadResString(prompt), objApi().tituloaplicacion(), {}).value_or(QString());
    const qsizetype length = name.trimmed().size();
    if (length == 0 && !WantsToType(LoadResString(3109) + u"\n\n"_s)) {
      return std::nullopt;
    }
    if (length > longestName && !WantsToType(LoadResString(3111) + u'\n')) {
      return std::nullopt;
    }
    if (!name.isEmpty() && length <= longestName) {
      return name;
    }
  }
}

}  // namespace letters
