#include "tests/app/pictures.h"

#include "tests/app/scenes.h"
#include "tests/app/stage.h"

#include <QColor>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace trellivar {

namespace {

// What two versions of a font library may draw differently stays below these.
constexpr int clearly = 24;
constexpr double mostOfAll = 0.005;
constexpr double mostOfATile = 0.03; // a small light is 50 dots
constexpr int tileSize = 20;

int distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

/// Colours that the eye takes for one.
struct Shade {
  qint64 count = 0;
  qint64 red = 0;
  qint64 green = 0;
  qint64 blue = 0;

  void add(QRgb color) {
    ++count;
    red += qRed(color);
    green += qGreen(color);
    blue += qBlue(color);
  }
  QRgb mean() const {
    return qRgb(static_cast<int>(red / count), static_cast<int>(green / count),
                static_cast<int>(blue / count));
  }
};

constexpr QRgb shadeOf(QRgb color) { return color & 0x00fcfcfcU; }

std::span<const QRgb> row(const QImage& image, int y) {
  return {reinterpret_cast<const QRgb*>(image.constScanLine(y)),
          static_cast<std::size_t>(image.width())};
}

QRgb nearest(const QList<QRgb>& table, QRgb color) {
  return *std::ranges::min_element(table, {}, [color](QRgb each) { return distance(each, color); });
}

/// Most of them are the most common ones; the others are those that are farthest from all of these,
/// such as the rims of letters in a rare colour.
QList<QRgb> tableFor(std::vector<Shade> shades) {
  constexpr qsizetype most = 256;
  constexpr qsizetype mostCommon = 160;
  std::ranges::sort(shades, std::ranges::greater{},
                    [](const Shade& shade) { return std::pair(shade.count, shade.mean()); });
  QList<QRgb> table;
  std::vector<std::pair<int, QRgb>> left; // with the distance from the table
  for (const Shade& shade : shades) {
    if (table.size() < mostCommon)
      table.append(shade.mean());
    else
      left.emplace_back(distance(nearest(table, shade.mean()), shade.mean()), shade.mean());
  }
  while (table.size() < most && !left.empty()) {
    const auto farthest = std::ranges::max_element(left);
    const QRgb added = farthest->second;
    table.append(added);
    left.erase(farthest);
    for (auto& [far, color] : left)
      far = std::min(far, distance(added, color));
  }
  return table;
}

} // namespace

QString fileName(const Scene& scene, const Look& look) {
  return QString("%1-%2-%3.png")
      .arg(QLatin1StringView(scene.name.data(), static_cast<qsizetype>(scene.name.size())),
           look.language, look.appearance);
}

QImage picture(Stage& stage, const Scene& scene, const Look& look) {
  stage.begin();
  stage.setLanguage(look.language);
  stage.setAppearance(look.appearance);
  scene.arrange(stage);
  stage.resize(1100, 720);
  return stage.window()->grabWindow().convertToFormat(QImage::Format_RGB32);
}

QImage withFewColors(const QImage& image) {
  std::unordered_map<QRgb, Shade> shades;
  for (int y = 0; y < image.height(); ++y) {
    for (const QRgb color : row(image, y))
      shades[shadeOf(color)].add(color);
  }
  std::vector<Shade> all;
  for (const auto& [key, shade] : shades)
    all.push_back(shade);
  const QList<QRgb> table = tableFor(std::move(all));
  std::unordered_map<QRgb, uchar> indices;
  for (const auto& [key, shade] : shades)
    indices[key] = static_cast<uchar>(table.indexOf(nearest(table, shade.mean())));
  QImage result(image.size(), QImage::Format_Indexed8);
  result.setColorTable(table);
  for (int y = 0; y < image.height(); ++y) {
    std::ranges::transform(row(image, y), result.scanLine(y),
                           [&](QRgb color) { return indices[shadeOf(color)]; });
  }
  return result;
}

std::optional<Difference> Difference::between(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return Difference{1, 1, {}, 255};
  Difference result{0, 0, {}, 0};
  std::map<std::pair<int, int>, int> differing; // pixels of each tile, by its row and column
  for (int y = 0; y < one.height(); ++y) {
    const auto here = row(one, y);
    const auto there = row(other, y);
    for (std::size_t x = 0; x < here.size(); ++x) {
      const int far = distance(here[x], there[x]);
      result.largest = std::max(result.largest, far);
      if (far > clearly) ++differing[{y / tileSize, static_cast<int>(x) / tileSize}];
    }
  }
  int all = 0;
  int most = 0;
  for (const auto& [tile, count] : differing) {
    all += count;
    if (count <= most) continue;
    most = count;
    result.tile = QPoint(tile.second, tile.first) * tileSize;
  }
  result.share = static_cast<double>(all) / (one.width() * one.height());
  result.tileShare = static_cast<double>(most) / (tileSize * tileSize);
  if (result.share <= mostOfAll && result.tileShare <= mostOfATile) return std::nullopt;
  return result;
}

} // namespace trellivar
