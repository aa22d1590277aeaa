#include <QApplication>
#include <QMainWindow>
#include <QTabWidget>
#include <QTableWidget>

// What any Qt program with two tables of this size costs: a window with nothing but them. bench/start compares the
// program with it.

namespace {

QTableWidget* table(int rows)
{
    constexpr int kColumns = 4;
    auto* widget = new QTableWidget(rows, kColumns);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            widget->setItem(row, column, new QTableWidgetItem(QString::number(row * kColumns + column)));
        }
    }
    return widget;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    auto* tabs = new QTabWidget(&window);
    tabs->addTab(table(27), QStringLiteral("27"));
    tabs->addTab(table(75), QStringLiteral("75"));
    window.setCentralWidget(tabs);
    window.resize(1000, 640);
    window.show();
    return QApplication::exec();
}
