#pragma once

#include <QtGlobal>

/// What the request under way (`objApi()`) asks of its dialog.
namespace framework {

/// `Agregar` or `Nuevo`
bool IsAdd();
bool IsModify();
/// An addition on behalf of another dialog.
bool IsNuevo();
/// The selected record.
qint32 Id();

}  // namespace framework
