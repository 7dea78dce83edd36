#pragma once

#include "support/Hands.h"
#include "support/PrivateServer.h"
#include "support/Shop.h"
#include "support/StatementLog.h"

#include <QSize>
#include <QTemporaryDir>

#include <memory>

namespace tarvessa {
class ReportControl;
}

namespace tarvessa::test {

/// The workbench of every screen: a shop in a database of its own, the clock at 15/03/2024 14:07:09, the
/// program's folder in a temporary place with the shipped layouts in it, what the server received, the report
/// control, and one screen with the hands of an operator in front of it.
class Bench : public Hands {
  public:
    Bench();
    virtual ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    PrivateServer& server() { return m_server; }
    Shop& shop() { return m_shop; }
    ReportControl* reportControl() const { return m_reportControl.get(); }

    /// Ends the screen, previews, viewers and the program's connection, empties database and program folder,
    /// makes the report control anew and forgets the statements. The shop is empty afterwards.
    void reset();

    /// As `reset`, with one row in `empresa` and the program's connection open: what a screen finds that the
    /// panel opens.
    void resetConnected();

    /// Opens the program's connection, anew if it is there. Ends the test program when it cannot.
    void connect();

    /// Takes the screen without showing it.
    void take(std::unique_ptr<QWidget> screen);
    /// Shows the screen at least that large and gives it the focus; false when it does not get it.
    bool show(const QSize& minimumSize = {});

    /// Ends the screen and the program's connection.
    void close();

    /// The statements since the last call, `mark` or `reset`.
    QStringList statements();
    /// The same, without forgetting them.
    QStringList texts() { return m_log.texts(); }
    void mark() { m_log.mark(); }

    /// One value of the database; a null text for NULL, "(no row)" for none.
    QString valor(const QString& sql) { return m_shop.valor(sql); }

    /// Where the program finds its layouts and writes its logs.
    QString programFolder() const { return m_folder.filePath(QStringLiteral("programa")); }

    /// Closes all previews; the number of those that were open.
    int closePreviews();

    /// The text of the last report as its PDF holds it, laid out. Raises TestError when it cannot be read.
    QString reportText() const;
    /// The same, blanks and line ends run together.
    QString reportWords() const { return reportText().simplified(); }

    /// The text shown by the program's own text viewer; null when it is not open.
    static QString viewerText();

  private:
    void prepareFolders();
    static void closeViewers();

    QTemporaryDir m_folder;
    PrivateServer m_server;
    StatementLog m_log;
    Shop m_shop;
    std::unique_ptr<ReportControl> m_reportControl;
    std::unique_ptr<QWidget> m_screen;
};

} // namespace tarvessa::test
