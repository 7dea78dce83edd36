#pragma once

#include "closing/PainelFechamento.h"
#include "support/Bench.h"
#include "ui/grid/Grid.h"

#include <QByteArray>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

namespace tarvessa::test {

/// The messages of a closing.
namespace mensagens {
extern const QString nadaSelecionado;
extern const QString lembrete;
extern const QString comErros;
extern const QString sucesso;
extern const QString semRegistro;
extern const QString semConexao;
/// What every error report says, and what it adds when the connection is gone.
extern const QString erroDeExecucao;
extern const QString conexaoPerdida;
} // namespace mensagens

/// The workbench with the closing panel on it, on a desktop where the program finds no other program to
/// start.
class PanelBench : public Bench {
  public:
    PanelBench();
    ~PanelBench() override;

    /// As `Bench::reset`; the folder of commands is empty again.
    void reset();

    /// Starts the program up as main() does. True when Form_Load said so; the panel is then shown and active,
    /// and the statements begin after that. It is made at least that large.
    bool open(const QSize& minimumSize = {});

    /// Wide enough for all columns, whatever the screen.
    static constexpr QSize wide{1060, 660};

    // The panel's controls; the panel must be open.
    PainelFechamento* panel() const { return static_cast<PainelFechamento*>(window()); }
    QComboBox* methods() const { return list(QStringLiteral("Combo1")); }
    QLineEdit* editor() const { return box(QStringLiteral("TextGrid")); }
    /// The total of the selected rows as shown.
    QString total() const { return box(QStringLiteral("Text1"))->text(); }
    QString cell(int row, int column) const { return grid()->text(row, column); }
    QStringList row(int row) const { return cells(grid(), row); }
    QStringList column(int column) const { return columnCells(grid(), column); }
    /// The row that shows the document; 0 for none.
    int rowOf(int pedido) const { return test::rowOf(grid(), 0, QString::number(pedido)); }
    /// True when the grid has the focus, or gets it back as soon as the window does.
    bool gridHasFocus() const { return panel()->focusWidget() == grid(); }
    /// Where the cell lies on the window that holds grid and editors.
    QRect cellPlace(int row, int column) const;

    /// Whether the closing log was opened for the operator, in whatever shows texts here.
    bool isLogOpened() const;
    QString logPath() const { return programFolder() + QStringLiteral("/LogFechamento.txt"); }

    /// The closing log byte for byte; null when there is none.
    QByteArray log() const;

    /// What a log with these lines after its header is, byte for byte.
    static QByteArray logWith(const QStringList& lines);

    /// The folder in which the program finds what it starts: empty, so that it finds nothing.
    QString commandsFolder() const { return m_commands.path(); }

  private:
    /// What stands in for Notepad on Windows leaves it there.
    QString openedMark() const { return logPath() + QStringLiteral(".aberto"); }

    QTemporaryDir m_commands;
    QByteArray m_previousPath;
};

} // namespace tarvessa::test
