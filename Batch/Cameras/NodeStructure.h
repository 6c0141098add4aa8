#ifndef NODESTRUCTURE_H
#define NODESTRUCTURE_H

#include "Document/Limits.h"
#include "Formula/Formula.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What the nodes of a description are, whatever they are called: for comparing it with another one. Refers to the
/// document.
class NodeStructure
{
public:
    /// Two of them are equal if what they are made of is.
    typedef std::uint64_t Digest;

    typedef OPX::KltAPI::Element Element;

    NodeStructure(const Element& root, const OPX::KltAPI::NodeNames& names);

    const OPX::KltAPI::Limits& AllLimits() const { return m_limits; }

    /// Null if the name leads to no known kind of node.
    const Element* Find(std::string_view name) const;

    /// The node, the one that its pValue names, the one that this one's names, and so on.
    std::vector<const Element*> ChainOf(const Element& node) const;

    /// The register that a part of one belongs to, or the node itself.
    const Element& WholeOf(const Element& node) const;

    /// What the value of a node is.
    /// \param places whether it matters where registers lie, and how long they are
    Digest DigestOf(const Element& node, bool places);

    /// How the value of a node is worked out of the one that lies behind it.
    /// \param places whether it matters where other registers lie that have a part in it
    Digest FormulasOf(const Element& node, bool places);

    /// All that is written in a node, and in the nodes that decide what it does. Much faster than the others.
    Digest TextOf(const Element& node);

    /// The value of a node, if it never changes.
    std::optional<OPX::KltAPI::Number> ConstantOf(const Element& node);

private:
    Digest ComputeDigest(const Element& node, bool places);
    Digest OwnDigest(const Element& node, bool places);
    Digest ShapeOf(const Element& node, bool places);
    Digest DigestOfElement(const Element& element, bool whole, bool places);
    Digest FormulaDigest(const Element& node, const Element& text, bool places);
    Digest TextOfElement(const Element& element, bool followsAll);
    Digest TextOfTarget(const Element& node);
    std::optional<OPX::KltAPI::Number> ComputeConstant(const Element& node);

    const OPX::KltAPI::NodeNames& m_names;
    const OPX::KltAPI::Limits m_limits;
    std::unordered_map<const Element*, const Element*> m_wholes; ///< Of entries of structures.
    std::array<std::unordered_map<const Element*, Digest>, 2> m_digests;
    std::unordered_map<const Element*, Digest> m_texts;
    std::unordered_map<const Element*, std::optional<OPX::KltAPI::Number>> m_constants;
};

#endif
