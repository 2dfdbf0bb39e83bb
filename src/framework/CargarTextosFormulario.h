#pragma once

#include <QWidget>

namespace framework {

/// Replaces the string numbers that a dialog's controls carry by the texts of the string table: the number is the
/// dynamic property `Tag` of the dialog, of labels, of the pages of tab widgets, of list columns (data of role
/// Qt::UserRole in the header item) and of all other controls; it is the caption itself for menus and their items, and
/// the tool tip itself for the tool tips of controls that are not labels, menus, tabs, tool bars or lists.
/// No error leaves it: a control that can't take a text, or whose number is not in the table, keeps what it shows.
void CargarTextosFormulario(QWidget* form);

}  // namespace framework
