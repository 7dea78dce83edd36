#include "app/Application.h"
#include "app/Run.h"

int main(int argc, char* argv[]) {
    const tarvessa::Application application(argc, argv);
    return tarvessa::run();
}
