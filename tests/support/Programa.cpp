#include "support/Programa.h"

#include "support/TestError.h"

#ifdef _WIN32
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <windows.h>
#else
#include <QProcess>
#endif

namespace tarvessa::teste {

namespace {

constexpr int EsperaMs = 60000;

} // namespace

#ifdef _WIN32

namespace {

QByteArray doLadoDeBaixo(QString texto) {
    if (texto.startsWith(QStringLiteral("Z:"))) {
        texto = texto.mid(2).replace(QLatin1Char('\\'), QLatin1Char('/'));
    }
    return '\'' + texto.replace(QLatin1Char('\''), QStringLiteral("'\\''")).toUtf8() + '\'';
}

QByteArray conteudo(const QString& caminho) {
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

/// Starts the shell of the machine below; nobody learns when it ends.
bool iniciaRoteiro(const QString& caminho) {
    STARTUPINFOW inicio{};
    inicio.cb = sizeof inicio;
    PROCESS_INFORMATION processo{};
    std::wstring linha =
        (QStringLiteral("sh ") + QString::fromUtf8(doLadoDeBaixo(caminho)).remove(u'\'')).toStdWString();
    return CreateProcessW(L"Z:\\bin\\sh", linha.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &inicio,
                          &processo) != 0;
}

} // namespace

FimDoPrograma executaPrograma(const QString& nome, const QStringList& argumentos) {
    const QTemporaryDir pasta;
    const QByteArray base = doLadoDeBaixo(pasta.path());
    QByteArray roteiro = nome.toUtf8();
    for (const QString& argumento : argumentos) {
        roteiro += ' ' + doLadoDeBaixo(argumento);
    }
    roteiro += " >" + base + "/saida 2>" + base + "/erros\necho $? >" + base + "/fim.novo\nmv " + base +
               "/fim.novo " + base + "/fim\n";
    QFile arquivo(pasta.filePath(QStringLiteral("roteiro")));
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(roteiro) != roteiro.size()) {
        return {};
    }
    arquivo.close();
    if (!iniciaRoteiro(arquivo.fileName())) {
        return {};
    }
    QElapsedTimer relogio;
    relogio.start();
    const QString fim = pasta.filePath(QStringLiteral("fim"));
    while (!QFile::exists(fim)) {
        if (relogio.elapsed() > EsperaMs) {
            return {};
        }
        QThread::msleep(5);
    }
    return {conteudo(fim).trimmed().toInt(), conteudo(pasta.filePath(QStringLiteral("saida"))),
            conteudo(pasta.filePath(QStringLiteral("erros")))};
}

#else

FimDoPrograma executaPrograma(const QString& nome, const QStringList& argumentos) {
    QProcess processo;
    processo.start(nome, argumentos);
    const bool terminou = processo.waitForFinished(EsperaMs) && processo.exitStatus() == QProcess::NormalExit;
    return {terminou ? processo.exitCode() : -1, processo.readAllStandardOutput(),
            processo.readAllStandardError()};
}

#endif

QByteArray saidaDe(const QString& nome, const QStringList& argumentos) {
    const FimDoPrograma fim = executaPrograma(nome, argumentos);
    if (fim.codigo != 0)
        throw TestError(nome + QStringLiteral(": ") + QString::fromUtf8(fim.erros));
    return fim.saida;
}

QString textoDoPdf(const QString& arquivo) {
    return QString::fromUtf8(
        saidaDe(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                              QStringLiteral("UTF-8"), arquivo, QStringLiteral("-")}));
}

} // namespace tarvessa::teste
