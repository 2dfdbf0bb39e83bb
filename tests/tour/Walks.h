#pragma once

#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"
#include "tour/Tour.h"

/// The walk, folder by folder of the component's dialogs.
namespace tour {

inline constexpr cConstNodo node;
inline constexpr cConstAccion action;

void WalkReference(Tour& tour);
void WalkBanking(Tour& tour);
void WalkRemittances(Tour& tour);
void WalkTaxes(Tour& tour);
void WalkPublications(Tour& tour);
void WalkLabels(Tour& tour);
void WalkLetters(Tour& tour);
void WalkLetterEditor(Tour& tour);
void WalkMailing(Tour& tour);
void WalkMoving(Tour& tour);
void WalkUsers(Tour& tour);
void WalkDeletions(Tour& tour);
void WalkWindow(Tour& tour);

}  // namespace tour
