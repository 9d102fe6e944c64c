#include "tests/app/scene_test.h"
#include "tests/app/window_items.h"

#include <QColor>
#include <QImage>
#include <cmath>

namespace trellivar {
namespace {

constexpr double wanted = 4.5;

/// The lightness of a colour as the eye takes it, from 0 to 1.
double luminance(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double one = luminance(a) + 0.05;
  const double other = luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

/// What `color` looks like on a ground.
QColor on(const QColor& ground, const QColor& color, double opacity) {
  const double share = color.alphaF() * opacity;
  const auto mix = [share](double below, double above) {
    return static_cast<float>(below + (above - below) * share);
  };
  return QColor::fromRgbF(mix(ground.redF(), color.redF()), mix(ground.greenF(), color.greenF()),
                          mix(ground.blueF(), color.blueF()));
}

/// A text with its colour and with what it is drawn on.
struct Word {
  QQuickItem* item;
  QColor color;
};

class Contrast : public SceneTest {
protected:
  QImage now() { return stage.window()->grabWindow().convertToFormat(QImage::Format_RGB32); }

  QList<Word> words() {
    QList<Word> words;
    for (QQuickItem* item : reachableItems(*stage.window())) {
      // What cannot be worked now is quiet on purpose.
      if (isText(*item) && item->isEnabled())
        words.append({item, item->property("color").value<QColor>()});
    }
    return words;
  }

  /// The weakest contrast of a text with a dot that its letters touch; none: it is covered.
  double weakest(const Word& word, const QImage& with, const QImage& without) {
    double weakest = 21;
    const QRect place = lettersOf(*word.item).toAlignedRect() & with.rect();
    const double opacity = stage.opacityOf(word.item);
    for (int y = place.top(); y <= place.bottom(); ++y) {
      for (int x = place.left(); x <= place.right(); ++x) {
        const QColor ground = without.pixelColor(x, y);
        if (with.pixelColor(x, y) == ground) continue;
        ++dots;
        weakest = std::min(weakest, contrast(ground, on(ground, word.color, opacity)));
      }
    }
    return weakest;
  }

  void expectReadable(const char* language, const char* appearance) {
    SCOPED_TRACE(std::string(language) + " " + appearance);
    enter(GetParam(), language, appearance);
    const QList<Word> texts = words();
    const QImage with = now();
    for (const Word& word : texts)
      word.item->setProperty("color", QColor(Qt::transparent));
    const QImage without = now();
    dots = 0;
    for (const Word& word : texts)
      EXPECT_GE(weakest(word, with, without), wanted)
          << described(*word.item).toStdString() << " in " << word.color.name().toStdString();
    EXPECT_GT(dots, 500) << "letters were found";
  }

  int dots = 0;
};

TEST_P(Contrast, isEnoughToRead) {
  for (const char* language : {"en", "zh-Hans"}) {
    expectReadable(language, "dark");
    expectReadable(language, "light");
  }
}

INSTANTIATE_TEST_SUITE_P(Screens, Contrast, everyScene(), nameOfScene);

TEST(ContrastOf, knownPairs) {
  EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
  EXPECT_NEAR(contrast("#767676", Qt::white), 4.54, 0.01);
  EXPECT_NEAR(contrast("#777777", Qt::white), 4.48, 0.01);
  EXPECT_EQ(on(Qt::white, Qt::black, 0.5).red(), 128);
}

} // namespace
} // namespace trellivar
