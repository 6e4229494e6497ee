#include "Walks.h"

#include <iterator>
#include <ostream>

namespace robotCell {

void CellWalk::walk(Cell const& cell)
{
    m_theCurrentToken = cell.token();
    cell.accept(this);
}

bool CellWalk::visitCurrentObject()
{
    NyXmlObject const* const object = m_theCurrentObject;
    show(m_theObjectStack.size(), currentLine());
    if (auto const* tasks = dynamic_cast<Tasks const*>(object)) {
        if (checkDepthTraversal(tasks)) {
            for (auto const& member : tasks->members()) {
                m_theCurrentToken = member->token();
                member->accept(this);
            }
        }
        afterDepthTraversal();
    }
    return true;
}

std::string CellWalk::currentLine() const
{
    // The type; perhaps "has attributes"; the name with the number of children, or the name and a value.
    std::string const& last = m_theMessages.back();
    std::string const& beforeLast = *std::prev(m_theMessages.end(), 2);
    std::string const name = m_theCurrentToken.token();
    if (beforeLast == name)
        return name + " = " + last;
    return last.compare(0, name.size(), name) == 0 ? last : name; // a class that the visitor doesn't know has a name only
}

void Listing::show(std::size_t depth, std::string const& line) { m_theStream << std::string(2 + 2 * depth, ' ') << line << '\n'; }

Picture::Picture(std::ostream& stream) : m_theStream(stream)
{
    m_theStream << "digraph cell {\n  rankdir=LR;\n  node [shape=box, style=rounded, fontname=\"sans-serif\", fontsize=10];\n";
}

Picture::~Picture() { m_theStream << "}\n"; }

void Picture::show(std::size_t depth, std::string const& line)
{
    std::string label;
    for (char c : line) {
        if (c == '"' || c == '\\')
            label += '\\';
        label += c;
    }
    unsigned int const node = m_theCount++;
    m_theStream << "  n" << node << " [label=\"" << label << "\"];\n";
    m_thePath.resize(depth);
    if (depth != 0)
        m_theStream << "  n" << m_thePath.back() << " -> n" << node << ";\n";
    m_thePath.push_back(node);
}

} // namespace robotCell
