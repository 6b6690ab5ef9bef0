// What a program of the same toolkit takes at the least: one window with two buttons.

#include <QApplication>
#include <QPushButton>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.setFixedSize(396, 238);
  QPushButton quit(QStringLiteral("Quit"), &window);
  quit.setGeometry(204, 198, 80, 20);
  QPushButton install(QStringLiteral("Install"), &window);
  install.setGeometry(296, 198, 80, 20);
  window.show();
  return QApplication::exec();
}
