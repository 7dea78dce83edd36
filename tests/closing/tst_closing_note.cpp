#include "base/ProgramFolder.h"
#include "closing/ClosingJournal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using closingjournal::ClosingNote;

/// What a batch leaves in the program's folder when it is cut, and what it does not.
class TstClosingNote : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void batchWritesOneFileOver();
    void closingThatEndedIsNotNoted();
    void cutBatchLeavesItsNote();
    void noteOfAnotherBatchIsLeftAlone();
    void newNoteReplacesAnOlderOne();
    void emptyNoteOfACutBatchIsRemoved();
    void linkIsNotFollowed();
    void withoutAFolderNothingIsNoted();

  private:
    QStringList files() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

Sale sale(qint32 number, const QString& customer = u"CLIENTE"_s) {
    return {number, u"BOLETO"_s, Dinheiro::dePonto(u"10.50"_s), QDate(2024, 3, 15), customer};
}

/// Ends as a program does that is killed.
void cutIn(const Sale& sale) {
    ClosingNote note;
    QVERIFY(note.begin(sale));
    note.keep();
}

} // namespace

void TstClosingNote::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    setProgramFolder(m_folder->path());
}

void TstClosingNote::cleanup() {
    setProgramFolder({});
}

QStringList TstClosingNote::files() const {
    return QDir(m_folder->path()).entryList({u"*.andamento"_s}, QDir::Files | QDir::System, QDir::Name);
}

void TstClosingNote::batchWritesOneFileOver() {
    {
        ClosingNote note;
        QVERIFY(note.begin(sale(1234567, u"CLIENTE DE NOME COMPRIDO, DA PRAÇA"_s)));
        QCOMPARE(closingjournal::find(1234567), sale(1234567, u"CLIENTE DE NOME COMPRIDO, DA PRAÇA"_s));
        note.end();
        QVERIFY(note.begin(sale(8, u"Z"_s)));
        QCOMPARE(closingjournal::all(), QList<qint32>{8});
        QCOMPARE(closingjournal::find(8), sale(8, u"Z"_s));
        QCOMPARE(closingjournal::find(1234567), std::nullopt);
        QCOMPARE(files(), QStringList{u"Fechamento1234567.andamento"_s});
    }
    QCOMPARE(files(), QStringList());
}

void TstClosingNote::closingThatEndedIsNotNoted() {
    for (const qint32 number : {3, 1234567}) {
        ClosingNote note;
        QVERIFY(note.begin(sale(number)));
        note.end();
        QCOMPARE(closingjournal::all(), QList<qint32>());
        QCOMPARE(closingjournal::find(number), std::nullopt);
    }
}

void TstClosingNote::cutBatchLeavesItsNote() {
    cutIn(sale(8));
    QCOMPARE(closingjournal::find(8), sale(8));
    closingjournal::forget(7);
    QCOMPARE(closingjournal::all(), QList<qint32>{8});
    closingjournal::forget(8);
    QCOMPARE(files(), QStringList());
}

void TstClosingNote::noteOfAnotherBatchIsLeftAlone() {
    {
        ClosingNote note;
        QVERIFY(note.begin(sale(1)));
        note.end();
        QVERIFY(note.begin(sale(57)));
        note.keep();
    }
    ClosingNote note;
    QVERIFY(note.begin(sale(1)));
    QCOMPARE(closingjournal::all(), (QList<qint32>{1, 57}));
    QCOMPARE(files(), (QStringList{u"Fechamento1-2.andamento"_s, u"Fechamento1.andamento"_s}));
}

void TstClosingNote::newNoteReplacesAnOlderOne() {
    cutIn(sale(57, u"ANTES"_s));
    {
        ClosingNote note;
        QVERIFY(note.begin(sale(1)));
        note.end();
        QVERIFY(note.begin(sale(57, u"DEPOIS"_s)));
        QCOMPARE(closingjournal::find(57), sale(57, u"DEPOIS"_s));
    }
    QCOMPARE(files(), QStringList());
}

void TstClosingNote::emptyNoteOfACutBatchIsRemoved() {
    {
        ClosingNote note;
        QVERIFY(note.begin(sale(1)));
        note.end();
        note.keep();
    }
    QCOMPARE(files().size(), 1);
    {
        ClosingNote note;
        QVERIFY(note.begin(sale(2)));
        QCOMPARE(files(), QStringList{u"Fechamento2.andamento"_s});
    }
    QCOMPARE(files(), QStringList());
}

void TstClosingNote::linkIsNotFollowed() {
#ifdef _WIN32
    QSKIP("a link is a file of its own there");
#else
    const QString target = m_folder->filePath(u"contas.txt"_s);
    QFile file(target);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("PV=5\n") == 5);
    file.close();
    QVERIFY(QFile::link(target, m_folder->filePath(u"Fechamento1.andamento"_s)));
    ClosingNote note;
    QVERIFY(note.begin(sale(1)));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("PV=5\n"));
#endif
}

void TstClosingNote::withoutAFolderNothingIsNoted() {
    setProgramFolder(m_folder->filePath(u"nenhuma"_s));
    ClosingNote note;
    QVERIFY(!note.begin(sale(1)));
    note.end();
    QCOMPARE(closingjournal::find(1), std::nullopt);
}

QTEST_GUILESS_MAIN(TstClosingNote)
#include "tst_closing_note.moc"
