#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tarvessa::teste {

/// How a program of this machine ended, and what it wrote.
struct FimDoPrograma {
    int codigo = -1; ///< its exit code; -1 when it did not run or did not end
    QByteArray saida;
    QByteArray erros;
};

/// Runs a program of this machine to its end, a minute at most. A test that is a Windows program under Wine
/// starts those of the machine below, and its paths on drive Z: are passed on in that machine's form.
FimDoPrograma executaPrograma(const QString& nome, const QStringList& argumentos);

/// What a program wrote that must succeed. Raises TestError when it does not.
QByteArray saidaDe(const QString& nome, const QStringList& argumentos);

/// The text of a PDF file, laid out as on the paper, a form feed after each page. Raises TestError.
QString textoDoPdf(const QString& arquivo);

} // namespace tarvessa::teste
