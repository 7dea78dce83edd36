#include "ui/ErrorReport.h"

#include <QApplication>
#include <QMessageBox>

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

} // namespace

void showErrorReport(QWidget* parent, const RuntimeError& error) {
    QMessageBox box(QMessageBox::Critical, u"Erro de execução"_s,
                    u"Erro em tempo de execução %1:\n\n%2"_s.arg(error.number()).arg(error.text()),
                    QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(consequence(error));
    QStringList details;
    if (!error.sqlState().isEmpty())
        details.append(u"SQLSTATE: "_s + error.sqlState());
    if (!error.statement().isEmpty())
        details.append(u"Comando SQL:\n"_s + error.statement());
    if (!details.isEmpty())
        box.setDetailedText(details.join(u'\n'));
    box.exec();
    if (error.endsProgram())
        QApplication::exit(EXIT_FAILURE);
}

} // namespace tarvessa
