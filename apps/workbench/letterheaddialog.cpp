#include "letterheaddialog.h"

#include <QBuffer>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLineEdit* field(QWidget* parent, const char* name, const QString& text, const QString& description)
{
    auto* edit = new QLineEdit(text, parent);
    edit->setObjectName(QLatin1String(name));
    edit->setAccessibleDescription(description);
    return edit;
}
}  // namespace

LetterheadDialog::LetterheadDialog(const ZebPackage::Letterhead& l, QWidget* parent)
    : QDialog(parent), m_logo(l.Logo)
{
    setObjectName(QStringLiteral("dlgLetterhead"));
    setWindowTitle(QStringLiteral("Office Letterhead"));

    m_name = field(this, "txtOfficeName", l.Name,
                   QStringLiteral("The office's name, at the head of its letters"));
    m_street =
        field(this, "txtOfficeStreet", l.Street, QStringLiteral("The office's street address"));
    m_street2 =
        field(this, "txtOfficeStreet2", l.Street2, QStringLiteral("Suite, floor or building"));
    m_city = field(this, "txtOfficeCity", l.City, QStringLiteral("The office's city"));
    m_state = field(this, "txtOfficeState", l.State, QStringLiteral("The office's state"));
    m_zip = field(this, "txtOfficeZip", l.Zip, QStringLiteral("The office's ZIP code"));
    m_phone = field(this, "txtOfficePhone", l.Phone, QStringLiteral("The office's phone number"));
    m_email = field(this, "txtOfficeEmail", l.Email, QStringLiteral("The office's e-mail address"));

    auto* form = new QFormLayout;
    const auto row = [&](const QString& caption, QWidget* widget) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(widget);
        widget->setAccessibleName(
            QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        form->addRow(label, widget);
    };
    row(QStringLiteral("&Name:"), m_name);
    row(QStringLiteral("&Street:"), m_street);
    row(QStringLiteral("S&uite or floor:"), m_street2);
    row(QStringLiteral("&City:"), m_city);
    row(QStringLiteral("S&tate:"), m_state);
    row(QStringLiteral("&ZIP:"), m_zip);
    row(QStringLiteral("&Phone:"), m_phone);
    row(QStringLiteral("&E-mail:"), m_email);

    m_logoView = new QLabel(this);
    m_logoView->setObjectName(QStringLiteral("picLogo"));
    m_logoView->setFixedSize(72, 72);
    m_logoView->setAlignment(Qt::AlignCenter);
    m_logoView->setFrameShape(QFrame::StyledPanel);
    m_logoView->setAccessibleName(QStringLiteral("Logo"));
    auto* choose = new QPushButton(QStringLiteral("Choose &Logo..."), this);
    choose->setObjectName(QStringLiteral("cmdChooseLogo"));
    auto* remove = new QPushButton(QStringLiteral("&Remove Logo"), this);
    remove->setObjectName(QStringLiteral("cmdRemoveLogo"));
    auto* logoButtons = new QVBoxLayout;
    logoButtons->addWidget(choose);
    logoButtons->addWidget(remove);
    logoButtons->addStretch();
    auto* logoRow = new QHBoxLayout;
    logoRow->addWidget(m_logoView);
    logoRow->addLayout(logoButtons);
    logoRow->addStretch();
    auto* logoCaption = new QLabel(QStringLiteral("Logo:"), this);
    form->addRow(logoCaption, logoRow);

    connect(choose, &QPushButton::clicked, this, [this] {
        const QString path =
            QFileDialog::getOpenFileName(this, QStringLiteral("Choose Logo"), QString(),
                                         QStringLiteral("Images (*.png *.jpg *.jpeg)"));
        if (!path.isEmpty() && !chooseLogo(path))
            QMessageBox::warning(this, QStringLiteral("Office Letterhead"),
                                 QStringLiteral("\"%1\" is not a PNG or JPEG image.").arg(path));
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        m_logo.clear();
        showLogo();
    });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("btnsLetterhead"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    auto* note = new QLabel(QStringLiteral("Printed at the head of every cover letter; the logo "
                                           "prints when a submittal's letter includes it."),
                            this);
    note->setWordWrap(true);
    layout->addWidget(note);
    layout->addLayout(form);
    layout->addWidget(buttons);
    showLogo();
    resize(460, sizeHint().height());
}

ZebPackage::Letterhead LetterheadDialog::letterhead() const
{
    ZebPackage::Letterhead l;
    l.Name = m_name->text().trimmed();
    l.Street = m_street->text().trimmed();
    l.Street2 = m_street2->text().trimmed();
    l.City = m_city->text().trimmed();
    l.State = m_state->text().trimmed();
    l.Zip = m_zip->text().trimmed();
    l.Phone = m_phone->text().trimmed();
    l.Email = m_email->text().trimmed();
    l.Logo = m_logo;
    return l;
}

bool LetterheadDialog::chooseLogo(const QString& path)
{
    QImageReader reader(path);
    const QByteArray format = reader.format();
    const QImage image = reader.read();
    if (image.isNull() || (format != "png" && format != "jpeg"))
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    m_logo = file.readAll();
    showLogo();
    return true;
}

void LetterheadDialog::showLogo()
{
    QImage image;
    if (!m_logo.isEmpty() && image.loadFromData(m_logo)) {
        m_logoView->setPixmap(QPixmap::fromImage(image.scaled(
            m_logoView->size() - QSize(6, 6), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
        m_logoView->setText(QString());
    } else {
        m_logoView->setPixmap(QPixmap());
        m_logoView->setText(QStringLiteral("none"));
    }
}
