#include "framework/ListHelper.h"

#include "framework/HostServices.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Invoke.h"

using automation::Call;
using namespace Qt::StringLiterals;

namespace framework {

ListHelper::ListHelper() : m_object(automation::CreateObject(u"KelApi.cListas"_s)) {}

void ListHelper::RellenarComboPais(QObject* combo, const QVariant& id) const {
  Call(m_object.get(), "RellenarComboPais", &objApi().congestion(), combo, id, true);
}

void ListHelper::RellenarComboProvincias(QObject* combo, qint32 country, const QVariant& id) const {
  Call(m_object.get(), "RellenarComboProvincias", &objApi().congestion(), combo, country, id, true);
}

void ListHelper::rellenarcombobancos(QObject* combo, const QVariant& id) const {
  Call(m_object.get(), "rellenarcombobancos", combo, &objApi().congestion(), id, true);
}

void ListHelper::rellenarcombosucursales(QObject* combo, qint32 bank, const QVariant& id) const {
  Call(m_object.get(), "rellenarcombosucursales", combo, bank, &objApi().congestion(), id, true);
}

void ListHelper::RellenarCombo(QObject* combo, const QString& origin, const QString& textColumn,
                               const QString& idColumn) const {
  Call(m_object.get(), "RellenarCombo", combo, origin, textColumn, idColumn, true);
}

void ListHelper::LocalizarElementoLista(QObject* combo, const QVariant& id) const {
  Call(m_object.get(), "LocalizarElementoLista", combo, id);
}

QString ListHelper::CargarBancoSucursalCaja(const QString& keyColumn, qint32 id) const {
  return automation::Text(Call(m_object.get(), "CargarBancoSucursalCaja", keyColumn, 0, id));
}

void ListHelper::CargarBancoSucursalLista(QObject* combo, const QString& keyColumn, const QString& code) const {
  Call(m_object.get(), "CargarBancoSucursalLista", combo, keyColumn, code, 0);
}

}  // namespace framework
