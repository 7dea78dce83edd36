#include "base/ProgramFolder.h"
#include "core/ArquivoLog.h"
#include "support/ErrorOf.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#ifndef _WIN32
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

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
    void whatIsNoOrdinaryFileIsRefusedAndLeftAlone_data();
    void whatIsNoOrdinaryFileIsRefusedAndLeftAlone();
    void lineThatCannotBeWrittenIsAnError();
    void folderIsTheExecutablesUnlessFixed();

  private:
    QByteArray conteudo(const QString& fileName) const {
        QFile written(m_folder->filePath(fileName));
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray("(no file)");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TstArquivoLog::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    setProgramFolder(m_folder->path());
}

void TstArquivoLog::cleanup() {
    setProgramFolder({});
    m_folder.reset();
}

void TstArquivoLog::linesAreUtf8EndedByCrLf() {
    ArquivoLog log;
    log.cria(u"Log.txt"_s);
    log.linha(u"PV 0000012 - PÃO"_s);
    log.linha(QString());
    log.linha(u"\U0001F950  "_s);
    log.fecha();
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray("PV 0000012 - P\xC3\x83O\r\n\r\n\xF0\x9F\xA5\x90  \r\n"));
    QCOMPARE(log.caminho(), m_folder->filePath(u"Log.txt"_s));
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
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("fileName");
    QTest::newRow("folder missing") << u"/nenhuma"_s << u"Log.txt"_s;
    QTest::newRow("a folder in its place") << QString() << u"ocupado"_s;
}

void TstArquivoLog::fileThatCannotBeCreatedIsAnError() {
    QFETCH(QString, folder);
    QFETCH(QString, fileName);
    QVERIFY(QDir(m_folder->path()).mkdir(u"ocupado"_s));
    setProgramFolder(m_folder->path() + folder);
    ArquivoLog log;
    const auto failure = errorOf([&] { log.cria(fileName); });
    QVERIFY(failure);
    QCOMPARE(failure->number(), number(ErrorNumber::FileNotWritable));
    QVERIFY2(failure->text().contains(QDir::toNativeSeparators(m_folder->path() + folder + u'/' + fileName)),
             qPrintable(failure->text()));
}

void TstArquivoLog::whatIsNoOrdinaryFileIsRefusedAndLeftAlone_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("reason");
    QTest::newRow("link to a file") << u"link"_s << u"é um atalho para outro lugar."_s;
    QTest::newRow("link to nothing") << u"dangling"_s << u"é um atalho para outro lugar."_s;
    QTest::newRow("folder") << u"folder"_s << u"é uma pasta."_s;
    QTest::newRow("pipe that nobody reads") << u"pipe"_s << u"não é um arquivo comum."_s;
    QTest::newRow("pipe with a reader") << u"read pipe"_s << u"não é um arquivo comum."_s;
    QTest::newRow("device") << u"device"_s << u"não é um arquivo comum."_s;
}

void TstArquivoLog::whatIsNoOrdinaryFileIsRefusedAndLeftAlone() {
#ifdef _WIN32
    QSKIP("made of what only Unix has");
#else
    QFETCH(QString, kind);
    QFETCH(QString, reason);
    const QString victim = m_folder->filePath(u"victim"_s);
    QFile file(victim);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    QString name = u"Log.txt"_s;
    const QString path = m_folder->filePath(name);
    const QByteArray bytes = QFile::encodeName(path);
    int reader = -1;
    if (kind == u"link") {
        QVERIFY(QFile::link(victim, path));
    } else if (kind == u"dangling") {
        QVERIFY(QFile::link(m_folder->filePath(u"nothing"_s), path));
    } else if (kind == u"folder") {
        QVERIFY(QDir(m_folder->path()).mkdir(name));
    } else if (kind == u"device") {
        setProgramFolder(u"/dev"_s);
        name = u"null"_s;
    } else {
        QCOMPARE(mkfifo(bytes.constData(), 0600), 0);
        if (kind == u"read pipe")
            reader = open(bytes.constData(), O_RDONLY | O_NONBLOCK);
    }
    ArquivoLog log;
    const auto error = errorOf([&] { log.cria(name); });
    if (reader >= 0)
        close(reader);
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::FileNotWritable));
    QVERIFY2(error->text().endsWith(reason), qPrintable(error->text()));
    QCOMPARE(conteudo(u"victim"_s), QByteArray("precious"));
    QVERIFY(!QFileInfo::exists(m_folder->filePath(u"nothing"_s)));
#endif
}

void TstArquivoLog::lineThatCannotBeWrittenIsAnError() {
    ArquivoLog log;
    log.cria(u"Log.txt"_s);
    log.linha(u"antes"_s);
#ifndef _WIN32
    // As on a full disk.
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit none{static_cast<rlim_t>(conteudo(u"Log.txt"_s).size()), before.rlim_max};
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &none), 0);
    const int error = errorNumberOf([&] { log.linha(u"perdida"_s); });
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, signalBefore);
    QCOMPARE(error, number(ErrorNumber::FileNotWritable));
#endif
    log.fecha();
    QCOMPARE(errorNumberOf([&] { log.linha(u"perdida"_s); }), number(ErrorNumber::FileNotWritable));
    QCOMPARE(conteudo(u"Log.txt"_s), QByteArray("antes\r\n"));
}

void TstArquivoLog::folderIsTheExecutablesUnlessFixed() {
    QCOMPARE(programFolder(), m_folder->path());
    setProgramFolder({});
    QCOMPARE(programFolder(), QCoreApplication::applicationDirPath());
    QVERIFY(!programFolder().endsWith(u'/'));
}

QTEST_GUILESS_MAIN(TstArquivoLog)
#include "tst_arquivo_log.moc"
