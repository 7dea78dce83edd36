#include "closing/PanelBench.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace mensagens {
const QString nadaSelecionado = u"Não há Pré-Venda selecionada. Verifique!!!"_s;
const QString lembrete = u"Lembrando que os pedidos de cliente com CPF serão cancelados."_s;
const QString comErros =
    u"Processo encerrado com alguns pedidos com erro de processamento. Na sequência será "
    "aberto um arquivo com as mensagens de erros."_s;
const QString sucesso = u"Processamento efetuado com sucesso."_s;
const QString semRegistro = u"Não há registro de venda. Verifique!!!"_s;
const QString semConexao = u"Não foi possível conectar ao banco de dados. Verifique!!!"_s;
const QString erroDeExecucao = u"Erro em tempo de execução"_s;
const QString conexaoPerdida = u"a próxima operação tentará abri-la novamente"_s;
} // namespace mensagens

PanelBench::PanelBench() : m_previousPath(qgetenv("PATH")) {
    QByteArray path = QFile::encodeName(commandsFolder());
#ifdef _WIN32
    // The programs that a test starts find their libraries there.
    path += ';' + m_previousPath;
#endif
    qputenv("PATH", path);
}

PanelBench::~PanelBench() {
    close();
    qputenv("PATH", m_previousPath);
}

bool PanelBench::isLogOpened() const {
#ifdef _WIN32
    return QFile::exists(openedMark());
#else
    return viewerText().startsWith(u"LOG DE FECHAMENTO:"_s);
#endif
}

void PanelBench::reset() {
    Bench::reset();
    QFile::remove(openedMark());
    QDir(commandsFolder()).removeRecursively();
    QDir().mkpath(commandsFolder());
}

bool PanelBench::open(const QSize& minimumSize) {
    close();
    take(std::make_unique<PainelFechamento>());
    if (!panel()->Form_Load())
        return false;
    if (!show(minimumSize))
        qWarning("the panel's window did not become active");
    mark();
    return true;
}

QRect PanelBench::cellPlace(int row, int column) const {
    QRect place = grid()->cellRect(row, column);
    place.moveTopLeft(grid()->mapTo(editor()->parentWidget(), place.topLeft()));
    return place;
}

QByteArray PanelBench::log() const {
    QFile file(logPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray PanelBench::logWith(const QStringList& lines) {
    QByteArray bytes = "LOG DE FECHAMENTO:\r\n------------------\r\n\r\n";
    for (const QString& line : lines)
        bytes += line.toUtf8() + "\r\n";
    return bytes;
}

} // namespace tarvessa::test
