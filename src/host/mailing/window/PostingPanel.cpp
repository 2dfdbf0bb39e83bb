#include "host/mailing/window/PostingPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

PostingPanel::PostingPanel(QWidget* parent)
    : QWidget(parent),
      m_order(new QComboBox(this)),
      m_together(new QCheckBox(this)),
      m_withoutAddress(new QCheckBox(this)) {
  m_order->setObjectName(u"cboOrden"_s);
  m_order->addItem(u"por apellidos"_s, int(PeopleOrder::Surname));
  m_order->addItem(u"por código postal"_s, int(PeopleOrder::Postcode));
  m_order->addItem(u"por número"_s, int(PeopleOrder::Number));
  m_together->setObjectName(u"chkJuntar"_s);
  m_withoutAddress->setObjectName(u"chkSinDireccion"_s);
  m_withoutAddress->setText(u"También a quien no tiene dirección"_s);
  const QSettings settings;
  m_order->setCurrentIndex(m_order->findData(settings.value(u"Correo/Orden"_s, int(PeopleOrder::Surname)).toInt()));
  m_together->setChecked(settings.value(u"Correo/Juntar"_s, true).toBool());
  auto* form = new QFormLayout(this);
  form->setContentsMargins({});
  form->addRow(u"&Orden:"_s, m_order);
  form->addRow(m_together);
  form->addRow(m_withoutAddress);
  connect(m_order, &QComboBox::currentIndexChanged, this, [this] {
    Remember();
    Q_EMIT OrderChanged();
  });
  for (QCheckBox* box : {m_together, m_withoutAddress}) {
    connect(box, &QCheckBox::toggled, this, [this] {
      Remember();
      Q_EMIT Changed();
    });
  }
}

void PostingPanel::SetPiece(const QString& piece) {
  m_together->setText(u"Una sola %1 por domic&ilio"_s.arg(piece));
}

QWidget* PostingPanel::LastField() const {
  return m_withoutAddress;
}

PeopleOrder PostingPanel::Order() const {
  return PeopleOrder(m_order->currentData().toInt());
}

void PostingPanel::Fill(MailingWish& wish) const {
  wish.order = Order();
  wish.onePerAddress = m_together->isChecked();
  wish.withoutAddressToo = m_withoutAddress->isChecked();
}

void PostingPanel::Remember() const {
  QSettings settings;
  settings.setValue(u"Correo/Orden"_s, m_order->currentData());
  settings.setValue(u"Correo/Juntar"_s, m_together->isChecked());
}

}  // namespace host
