#include "core/ArquivoLog.h"
#include "core/ProgramFolder.h"
#include "support/ErrorOf.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The logs in the program's folder, byte for byte.
class TstArquivoLog : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void linesAreUtf8EndedByCrLf();
    void everyLineIsOnDiskAtOnce();
    void creatingAgainEmptiesTheFile();
    void anotherNameIsAnotherFile();
    void fileThatCannotBeCreatedIsAnError_data();
    void fileThatCannotBeCreatedIsAnError();
    void lineThatCannotBeWrittenIsAnError();
    void folderIsTheExecutablesUnlessFixed();

  private:
    QByteArray conteudo(const QString& nome) const {
        QFile arquivo(m_pasta->filePath(nome));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(no file)");
    }

    std::unique_ptr<QTemporaryDir> m_pasta;
};

void TstArquivoLog::init() {
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
    setProgramFolder(m_pasta->path());
}

void TstArquivoLog::cleanup() {
    setProgramFolder({});
    m_pasta.reset();
}

void TstArquivoLog::linesAreUtf8EndedByCrLf() {
    ArquivoLog log;
    log.cria(u"Log.txt"_s);
    log.linha(u"PV 0000012 - PÃO"_s);
    log.linha(QString());
    log.linha(u"\U0001F950  "_s);
    log.fecha();
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray("PV 0000012 - P\xC3\x83O\r\n\r\n\xF0\x9F\xA5\x90  \r\n"));
    QCOMPARE(log.caminho(), m_pasta->filePath(u"Log.txt"_s));
}

void TstArquivoLog::everyLineIsOnDiskAtOnce() {
    ArquivoLog log;
    log.cria(u"Log.txt"_s);
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray(""));
    log.linha(u"um"_s);
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray("um\r\n"));
    log.linha(u"dois"_s);
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray("um\r\ndois\r\n"));
}

void TstArquivoLog::creatingAgainEmptiesTheFile() {
    ArquivoLog log;
    log.cria(u"Log.txt"_s);
    log.linha(u"antiga"_s);
    log.cria(u"Log.txt"_s);
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray(""));
    log.linha(u"nova"_s);
    log.fecha();
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray("nova\r\n"));
}

void TstArquivoLog::anotherNameIsAnotherFile() {
    ArquivoLog log;
    log.cria(u"A.txt"_s);
    log.linha(u"a"_s);
    log.cria(u"B.log"_s);
    log.linha(u"b"_s);
    QCOMPARE(conteudo(u"A.txt"_s), QByteArray("a\r\n"));
    QCOMPARE(conteudo(u"B.log"_s), QByteArray("b\r\n"));
}

void TstArquivoLog::fileThatCannotBeCreatedIsAnError_data() {
    QTest::addColumn<QString>("pasta");
    QTest::addColumn<QString>("nome");
    QTest::newRow("folder missing") << u"/nenhuma"_s << u"Log.txt"_s;
    QTest::newRow("a folder in its place") << QString() << u"ocupado"_s;
}

void TstArquivoLog::fileThatCannotBeCreatedIsAnError() {
    QFETCH(QString, pasta);
    QFETCH(QString, nome);
    QVERIFY(QDir(m_pasta->path()).mkdir(u"ocupado"_s));
    setProgramFolder(m_pasta->path() + pasta);
    ArquivoLog log;
    const auto erro = errorOf([&] { log.cria(nome); });
    QVERIFY(erro);
    QCOMPARE(erro->number(), number(ErrorNumber::FileNotWritable));
    QVERIFY2(erro->text().contains(QDir::toNativeSeparators(m_pasta->path() + pasta + u'/' + nome)),
             qPrintable(erro->text()));
}

void TstArquivoLog::lineThatCannotBeWrittenIsAnError() {
    // A device that is always full.
    setProgramFolder(u"/dev"_s);
    ArquivoLog log;
    log.cria(u"full"_s);
    QCOMPARE(errorNumberOf([&] { log.linha(u"perdida"_s); }), number(ErrorNumber::FileNotWritable));
}

void TstArquivoLog::folderIsTheExecutablesUnlessFixed() {
    QCOMPARE(programFolder(), m_pasta->path());
    setProgramFolder({});
    QCOMPARE(programFolder(), QCoreApplication::applicationDirPath());
    QVERIFY(!programFolder().endsWith(u'/'));
}

QTEST_GUILESS_MAIN(TstArquivoLog)
#include "tst_arquivo_log.moc"
