#ifndef DOCUMENT_H
#define DOCUMENT_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OPX::KltAPI
{

/// An element of a camera's description, with all that is in it.
struct DescriptionElement
{
    std::string tag;
    std::string name;   ///< Its attribute Name; empty if there is none.
    int line = 0;       ///< Where its start tag begins.
    std::string text;   ///< What stands between its tags, without white space around it.
    std::string padded; ///< The same with the white space; empty if there is none.
    std::vector<std::pair<std::string, std::string>> attributes; ///< All but the name.
    std::vector<DescriptionElement> children;                    ///< In the order of the document.

    /// The child of this kind that counts: the last one. Null if there is none.
    const DescriptionElement* Child(std::string_view childTag) const;

    /// The name that the SDK looks for where the element refers to a node: white space is a part of it.
    const std::string& Target() const { return padded.empty() ? text : padded; }

    /// The value of an attribute, which need not be there.
    std::string_view Attribute(std::string_view attribute) const;
};

/// Reads a description that the SDK has accepted. What is returned is the root element; its children are the nodes of
/// the camera, those in groups among them. What extensions hold is left out. Names are those that the SDK knows, with
/// their prefixes.
/// \param xml as `GetDescription` delivers it
/// \param firstLine the line of the file in which it begins
DescriptionElement ReadNodes(const std::string& xml, int firstLine = 1);

} // namespace OPX::KltAPI

#endif
