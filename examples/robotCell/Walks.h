#ifndef ROBOTCELL_WALKS_H
#define ROBOTCELL_WALKS_H

// Two walks over a tree of objects: one lists it, one draws it.

#include "Model.h"

#include <nyXml/traversal/NyXmlObjectVisitor.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace robotCell {

/// A walk that enters the tasks as well: the visitor leaves the members of a container of this kind to those who know it.
class CellWalk : public NyXmlObjectVisitor {
public:
    /// Starts at the root, under the root's own name.
    void walk(Cell const& cell);

private:
    bool visitCurrentObject() final;

    /// Shows one object. \param depth  0 for the root  \param line  its name and value, or its name and number of children
    virtual void show(std::size_t depth, std::string const& line) = 0;

    std::string currentLine() const;
};

/// Prints each object on a line, indented by its depth.
class Listing : public CellWalk {
public:
    /// \param stream  stays the caller's
    explicit Listing(std::ostream& stream) : m_theStream(stream) {}

private:
    void show(std::size_t depth, std::string const& line) override;

    std::ostream& m_theStream;
};

/// Draws the tree in DOT, the language of Graphviz: a node for each object, an edge to each child.
class Picture : public CellWalk {
public:
    /// The picture begins and ends with this object. \param stream  stays the caller's
    explicit Picture(std::ostream& stream);
    ~Picture() override;

private:
    void show(std::size_t depth, std::string const& line) override;

    std::ostream& m_theStream;
    std::vector<unsigned int> m_thePath; ///< numbers of the nodes from the root to the one shown last
    unsigned int m_theCount = 0;
};

} // namespace robotCell

#endif
