#pragma once
// The logo: records of a list whose slant makes a Z, drawn, so that it is crisp at any scale.

#include <QIcon>
#include <QWidget>

class QPainter;

namespace zorvane {

// Fills a square of `side` with the logo, its corner at the painter's origin.
void PaintLogo(QPainter& painter, double side);

// The logo in the sizes that desktops ask for.
[[nodiscard]] QIcon LogoIcon();

// A picture box that shows the logo as large as it fits.
class LogoBox : public QWidget {
    Q_OBJECT
  public:
    explicit LogoBox(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zorvane
