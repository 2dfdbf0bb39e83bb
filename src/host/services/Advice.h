#pragma once

#include <QString>

namespace host {

/// What to do about an error whose own text would tell a user nothing, by its number; empty where the text says it.
QString AdviceFor(int errorNumber);

}  // namespace host
