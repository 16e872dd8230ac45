#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "platform/atspi/Bus.h"

namespace tavin::atspi {

struct GatheredText {
  QString text;
  bool complete = true;  // False where objects within the selection were left out.
  QStringList parts;     // The stretches of text that it was put together from.
};

// Puts together the selected text of an object. In a page, marks stand for the objects within the
// text (paragraphs, links, images); each of them is asked for its own selected text in turn, all
// of one level at once. Stops after `mostObjects` of them or at the deadline.
class TextGatherer {
 public:
  TextGatherer(Bus& bus, std::size_t mostObjects, Deadline deadline)
      : bus_(bus), mostObjects_(mostObjects), deadline_(deadline) {}

  GatheredText gather(const ObjectRef& object);

 private:
  struct Piece {
    QString text;
    std::size_t child = 0;  // Index in nodes_; 0 where the piece is text.
  };
  struct Node {
    ObjectRef object;
    Role role = Role::unknown;
    QString name;
    std::vector<Piece> pieces;
  };
  struct Mark {
    std::size_t node = 0;   // Where it stands,
    std::size_t piece = 0;  // as which piece,
    int offset = 0;         // and at which character of the object's whole text.
  };

  std::vector<std::size_t> resolve(const std::vector<Mark>& marks);
  std::vector<Question> selectedTexts(const std::vector<std::size_t>& nodes,
                                      std::vector<std::size_t>& owners);
  std::vector<Mark> readSelections(const std::vector<std::size_t>& nodes);
  void split(std::size_t node, const QString& text, int start, std::vector<Mark>& marks);
  QString assemble(std::size_t node);

  Bus& bus_;
  const std::size_t mostObjects_;
  const Deadline deadline_;
  std::vector<Node> nodes_;
  std::size_t ranges_ = 0;  // Asked for so far.
  GatheredText result_;
};

// Without what toolkits add to a text for their own needs: marks for objects, and fillers that
// follow characters beyond the first 65536.
QString withoutMarks(const QString& text);

}  // namespace tavin::atspi
