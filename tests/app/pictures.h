#pragma once

#include <QImage>
#include <QString>
#include <array>
#include <optional>

namespace trellivar {

class Stage;
struct Scene;

/// How the documents show each scene.
struct Look {
  const char* language;
  const char* appearance;
};
inline constexpr std::array<Look, 4> looks{
    {{"en", "dark"}, {"en", "light"}, {"zh-Hans", "dark"}, {"zh-Hans", "light"}}};

/// "settings-zh-Hans-dark.png".
QString fileName(const Scene& scene, const Look& look);
/// The scene as it looks in a window of the usual size. The stage has it from then on.
QImage picture(Stage& stage, const Scene& scene, const Look& look);
/// The same with no more than 256 colours, close enough for the eye, for a small file.
/// `image` has 32 bits a pixel.
QImage withFewColors(const QImage& image);

/// Where two pictures differ so much that people would see it.
struct Difference {
  double share;     ///< of the pixels that differ clearly, over all
  double tileShare; ///< the same in the tile that differs most
  QPoint tile;      ///< its upper left corner
  int largest;      ///< between two channels, of 255

  /// Both have 32 bits a pixel. None when they are alike. Different sizes differ everywhere.
  static std::optional<Difference> between(const QImage& one, const QImage& other);
};

} // namespace trellivar
