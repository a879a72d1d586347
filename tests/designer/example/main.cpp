// A host whose screen is a Designer form compiled by uic: the controls come from the library
// directly, their design values from the generated setupUi().
#include "ui_submittalform.h"

#include <QApplication>
#include <QStringList>
#include <QTextStream>

namespace {

// With --check the host verifies the design values it was built with and exits 0 or 1.
int checkDesign(const Ui::SubmittalForm& ui)
{
    QStringList problems;
    auto expect = [&](bool ok, const char* what) {
        if (!ok)
            problems << QString::fromLatin1(what);
    };
    expect(ui.textSelect->AllowUpdate(), "textSelect AllowUpdate");
    expect(ui.textSelect->AllowReorder(), "textSelect AllowReorder");
    expect(ui.textSelect->MaxLength() == 40, "textSelect MaxLength");
    expect(ui.textSelect->TextObjectType() == 3, "textSelect TextObjectType");
    expect(ui.textSelect->AllowSave(), "textSelect AllowSave");
    expect(ui.custSelect->AllowAdd(), "custSelect AllowAdd");
    expect(ui.custSelect->AllowDelete(), "custSelect AllowDelete");
    expect(ui.generalInfo && ui.cvrLtrCriteria && ui.bomCriteria && ui.labelCriteria && ui.subLine
               && ui.subLines && ui.subLineDsp,
           "every control placed");
    QTextStream out(stdout);
    for (const QString& problem : problems)
        out << "Design value not applied: " << problem << '\n';
    return problems.isEmpty() ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QWidget form;
    Ui::SubmittalForm ui;
    ui.setupUi(&form);
    if (app.arguments().contains(QStringLiteral("--check")))
        return checkDesign(ui);
    form.show();
    return app.exec();
}
