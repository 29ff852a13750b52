#pragma once

class QWidget;

/// The box that tells what the program is, with the versions that a report of a problem needs.
namespace AboutBox {

void show(QWidget& window);

}  // namespace AboutBox
