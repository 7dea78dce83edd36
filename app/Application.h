#pragma once

#include <QApplication>

namespace tarvessa {

/// The application object: Brazilian locale, Qt's own texts in Portuguese, window icon, and the error report
/// of last resort for what no guard caught.
class Application : public QApplication {
    Q_OBJECT

  public:
    Application(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace tarvessa
