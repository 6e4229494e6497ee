// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLITEMVECTOR_H
#define NYXML_VALUES_DETAIL_NYXMLITEMVECTOR_H

#include <nyXml/values/detail/NyXmlItems.h>

#include <algorithm>
#include <cstddef>
#include <vector>

/// What the families of sequences do alike with the standard vector that holds their items. For the families' own use.
namespace NyXmlItems {

/// Erases the items from \p first up to but not including \p last, or reports that there is no such range.
template <class Item>
bool erase(std::vector<Item>& items, char const* where, unsigned int first, unsigned int last)
{
    if (!canErase(where, first, last, static_cast<unsigned int>(items.size())))
        return false;
    items.erase(items.begin() + first, items.begin() + last);
    return true;
}

/// The same for one item.
template <class Item>
bool erase(std::vector<Item>& items, NyXmlItemFamily const& family, char const* where, unsigned int index)
{
    if (!canErase(family, where, index, static_cast<unsigned int>(items.size())))
        return false;
    items.erase(items.begin() + index);
    return true;
}

/// Makes the item at \p index the first and keeps the order cyclically. \return false if there is no such item
template <class Item>
bool leftRotate(std::vector<Item>& items, unsigned int index)
{
    if (index >= items.size())
        return false;
    std::rotate(items.begin(), items.begin() + index, items.end());
    return true;
}

/// Puts copies of the others behind the items. They may be the items themselves, so they are counted first and taken by index.
template <class Item>
void append(std::vector<Item>& items, std::vector<Item> const& others)
{
    std::size_t const count = others.size();
    for (std::size_t i = 0; i < count; ++i)
        items.push_back(others[i]);
}

} // namespace NyXmlItems

#endif
