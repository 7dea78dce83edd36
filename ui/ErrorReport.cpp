#include "ui/ErrorReport.h"

#include "base/Clock.h"
#include "ui/ErrorAdvice.h"
#include "ui/Manual.h"

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QPushButton>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QString consequence(const RuntimeError& error) {
    const QString stopped = u"A operação foi interrompida; o que já foi executado permanece gravado."_s;
    if (error.isConnectionLost())
        return stopped +
               u" A conexão com o banco de dados foi perdida; a próxima operação tentará abri-la novamente."_s;
    return error.endsProgram() ? stopped + u" O programa será encerrado."_s : stopped;
}

QString reportText(const RuntimeError& error) {
    QStringList parts{u"Erro em tempo de execução %1:"_s.arg(error.number())};
    if (const QString advice = errorAdvice(error); !advice.isEmpty())
        parts.append(advice);
    parts.append(error.text());
    return parts.join(u"\n\n"_s);
}

/// What whoever looks after the system wants to know, all of it in one text.
QString wholeReport(const QMessageBox& box) {
    QStringList parts{u"%1 %2 - %3"_s.arg(QCoreApplication::applicationName(),
                                          QCoreApplication::applicationVersion(),
                                          clock::now().toString(u"dd/MM/yyyy HH:mm:ss"_s)),
                      box.text(), box.informativeText()};
    if (!box.detailedText().isEmpty())
        parts.append(box.detailedText());
    return parts.join(u"\n\n"_s) + u'\n';
}

// A button of a message box closes it, unless its click goes elsewhere.
void addCopyButton(QMessageBox& box) {
    QPushButton* copy = box.addButton(u"&Copiar"_s, QMessageBox::ActionRole);
    copy->setObjectName(u"Copiar"_s);
    copy->setAutoDefault(false);
    QObject::disconnect(copy, &QPushButton::clicked, nullptr, nullptr);
    QObject::connect(copy, &QPushButton::clicked, copy, [&box, copy] {
        QApplication::clipboard()->setText(wholeReport(box));
        copy->setText(u"&Copiado"_s);
    });
}

} // namespace

void showErrorReport(QWidget* parent, const RuntimeError& error) {
    QMessageBox box(QMessageBox::Critical, u"Erro de execução"_s, reportText(error), QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(consequence(error));
    QStringList details;
    if (!error.sqlState().isEmpty())
        details.append(u"SQLSTATE: "_s + error.sqlState());
    if (!error.statement().isEmpty())
        details.append(u"Comando SQL:\n"_s + error.statement());
    if (!details.isEmpty())
        box.setDetailedText(details.join(u'\n'));
    addCopyButton(box);
    manual::opensAt(&box, u"avisos"_s);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    box.exec();
    if (error.endsProgram())
        QApplication::exit(EXIT_FAILURE);
}

} // namespace tarvessa
