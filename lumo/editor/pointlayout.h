#pragma once

namespace Ui {
class PointWidget;
}

namespace lumo {

/// Arranges the fields of the point page for its width: two, three or six fields in a row, and the captions
/// of speed and zone beside or above their fields.
class PointLayout {
public:
    /// The form, set up. Not owned.
    explicit PointLayout(Ui::PointWidget* form);

    /// Whether a seventh joint takes a place.
    void showSeventh(bool shown);
    /// Margins, gaps and icons at the scale in force.
    void measure();
    /// For a page of this width, px.
    void arrange(int width);

private:
    enum class Shape { None, Narrow, Wide, Broad };

    void placeCoordinates() const;
    void placeSpeed() const;

    Ui::PointWidget* const form_;
    Shape shape_ = Shape::None;
    bool hasSeventh_ = false;
};

}  // namespace lumo
