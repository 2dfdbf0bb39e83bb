#pragma once

#include "framework/FormularioMantenimiento.h"

#include <memory>

namespace Ui {
class frmPais;
}

/// Adds or edits one country.
class frmPais : public FormularioMantenimiento {
  Q_OBJECT

 public:
  frmPais();
  ~frmPais() override;

 protected:
  void CrearControles() override;
  bool Cargar() override;
  QAbstractButton* BotonAceptar() const override;

 private:
  void cmdPais_Click(int index);
  void Guardar(const QString& nombre);

  std::unique_ptr<Ui::frmPais> m_ui;
};
