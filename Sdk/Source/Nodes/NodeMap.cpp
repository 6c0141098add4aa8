#include "Nodes/NodeMap.h"

#include "Base/Failure.h"
#include "Formula/Formula.h"
#include "Nodes/NodeLinks.h"
#include "Nodes/NodeRange.h"
#include "Nodes/NodeValues.h"
#include "Schema/Schema.h"

#include <cmath>
#include <limits>
#include <map>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

std::string ContentOf(ArvGcPropertyNode* property)
{
    CallError error;
    const char* text = arv_gc_property_node_get_string(property, error.Out());
    return text == nullptr ? std::string() : text;
}

std::string VariableOf(ArvGcPropertyNode* property)
{
    const char* name = arv_gc_property_node_get_name(property);
    return name == nullptr ? std::string() : name;
}

Number ValueOf(ArvGcNode* node)
{
    return Checked([node](GError** error) { return ReadNumber(node, error); });
}

/// The formulas of one node, ready to be evaluated.
class NodeFormulas
{
public:
    explicit NodeFormulas(ArvGcNode* node)
        : m_integers(!FindNodeKind(arv_dom_node_get_node_name(ARV_DOM_NODE(node)))->Is(Trait::Real)),
          m_value(ValueNode(node))
    {
        ForEachProperty(
            node, [this](ArvGcPropertyNode* property, ArvGcPropertyNodeType type) { Take(property, type); });
    }

    ArvGcNode* Value() const { return m_value; }

    /// \param given the value that the formula converts, and its name
    Number Evaluate(ArvGcPropertyNodeType type, const std::pair<std::string, Number>& given = {})
    {
        return FormulaOf(type, given.first)
            .Evaluate(
                [&](const std::string& name) {
                    return name == given.first ? given.second
                                               : ValueOf(arv_gc_property_node_get_linked_node(m_variables.at(name)));
                });
    }

private:
    void Take(ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
    {
        if (type == ARV_GC_PROPERTY_NODE_TYPE_P_VARIABLE)
            m_variables[VariableOf(property)] = property;
        else if (type == ARV_GC_PROPERTY_NODE_TYPE_EXPRESSION || type == ARV_GC_PROPERTY_NODE_TYPE_CONSTANT)
            m_expressions[VariableOf(property)] = ContentOf(property); // A constant like -1 is a formula, too.
        else if (type == ARV_GC_PROPERTY_NODE_TYPE_FORMULA || type == ARV_GC_PROPERTY_NODE_TYPE_FORMULA_TO ||
                 type == ARV_GC_PROPERTY_NODE_TYPE_FORMULA_FROM)
            m_texts[type] = ContentOf(property);
    }

    const Formula& FormulaOf(ArvGcPropertyNodeType type, const std::string& given)
    {
        const auto known = m_formulas.find(type);
        if (known != m_formulas.end())
            return known->second;
        std::set<std::string> variables;
        for (const auto& variable : m_variables)
            variables.insert(variable.first);
        if (!given.empty())
            variables.insert(given);
        return m_formulas.emplace(type, Formula(m_texts[type], m_integers, m_expressions, variables)).first->second;
    }

    const bool m_integers;
    ArvGcNode* const m_value; ///< What a converter converts.
    std::map<std::string, ArvGcPropertyNode*> m_variables;
    Formula::Expressions m_expressions;
    std::map<ArvGcPropertyNodeType, std::string> m_texts;
    std::map<ArvGcPropertyNodeType, Formula> m_formulas;
};

const char FormulasKey[] = "kolta-formulas";
const char DescriptionKey[] = "kolta-description";

/// Null for nodes of node maps that others made.
NodeFormulas* FormulasOf(gpointer node)
{
    auto* const known = static_cast<NodeFormulas*>(g_object_get_data(G_OBJECT(node), FormulasKey));
    if (known != nullptr)
        return known;
    ArvGc* nodeMap = arv_gc_node_get_genicam(ARV_GC_NODE(node));
    if (nodeMap == nullptr || g_object_get_data(G_OBJECT(nodeMap), DescriptionKey) == nullptr)
        return nullptr;
    auto* const formulas = new NodeFormulas(ARV_GC_NODE(node));
    g_object_set_data_full(G_OBJECT(node), FormulasKey, formulas,
        [](gpointer formulasOfNode) { delete static_cast<NodeFormulas*>(formulasOfNode); });
    return formulas;
}

/// Evaluates something. Nothing is thrown through Aravis, which is written in C.
template <class Result, class Work>
Result Guarded(Result fallback, GError** error, Work work)
{
    try
    {
        return work();
    }
    catch (CallError& failure)
    {
        failure.MoveTo(error);
    }
    catch (const Failure& failure)
    {
        PassOn(failure, error);
    }
    catch (const FormulaError& failure)
    {
        PassOn({CodeOf(failure), {failure.what()}}, error);
    }
    catch (const std::exception& failure)
    {
        PassOn({KltErrorResources, {failure.what()}}, error);
    }
    return fallback;
}

Number ReadFormula(gpointer node, NodeFormulas& formulas)
{
    return ARV_IS_GC_CONVERTER(node)
               ? formulas.Evaluate(ARV_GC_PROPERTY_NODE_TYPE_FORMULA_FROM, {"TO", ValueOf(formulas.Value())})
               : formulas.Evaluate(ARV_GC_PROPERTY_NODE_TYPE_FORMULA);
}

void WriteConverted(NodeFormulas& formulas, const Number& value)
{
    Number converted = formulas.Evaluate(ARV_GC_PROPERTY_NODE_TYPE_FORMULA_TO, {"FROM", value});
    ArvGcNode* node = formulas.Value();
    if (!ARV_IS_GC_INTEGER(node) && !ARV_IS_GC_FLOAT(node))
        throw Failure(KltErrorNotFound, {"A converter needs a node that is not there"});
    if (Failure failure = FitIntoRange(node, converted, true))
        throw Failure(failure.code, {"A converted value " + failure.reason.text});
    Checked([&](GError** error) { return WriteNumber(node, converted, error), true; });
}

/// A limit as a formula gets it: an integer that is none becomes infinite.
Number LimitOf(const Range& range, long double limit)
{
    const bool isNone = limit <= static_cast<long double>(INT64_MIN) || limit >= static_cast<long double>(INT64_MAX);
    if (range.whole && !isNone)
        return Number(static_cast<std::int64_t>(limit));
    return Number(range.whole ? std::copysign(HUGE_VAL, static_cast<double>(limit)) : static_cast<double>(limit));
}

/// The limit of what a converter yields. If it cannot be evaluated, there is none.
long double ConvertedLimit(NodeFormulas& formulas, bool maximum)
{
    const long double none = maximum ? HUGE_VALL : -HUGE_VALL;
    CallError ignored;
    return Guarded(none, ignored.Out(),
        [&]
        {
            const Range range = RangeOf(formulas.Value());
            const auto convert = [&](long double limit)
            {
                const Number number = LimitOf(range, limit);
                return formulas.Evaluate(ARV_GC_PROPERTY_NODE_TYPE_FORMULA_FROM, {"TO", number}).AsWide();
            };
            const long double one = convert(range.minimum);
            const long double other = convert(range.maximum); // A formula can fall.
            return std::isnan(one + other) ? none : maximum ? std::fmax(one, other) : std::fmin(one, other);
        });
}

/// The functions of an interface as they were.
template <class Interface>
std::unordered_map<gconstpointer, Interface>& Originals()
{
    static std::unordered_map<gconstpointer, Interface> originals;
    return originals;
}

const ArvGcIntegerInterface& Original(ArvGcInteger* node)
{
    return Originals<ArvGcIntegerInterface>().at(ARV_GC_INTEGER_GET_IFACE(node));
}

const ArvGcFloatInterface& Original(ArvGcFloat* node)
{
    return Originals<ArvGcFloatInterface>().at(ARV_GC_FLOAT_GET_IFACE(node));
}

template <class Node, class Value>
Value Get(Node* node, GError** error)
{
    NodeFormulas* formulas = FormulasOf(node);
    if (formulas == nullptr)
        return Original(node).get_value(node, error);
    return Guarded(Value(0), error,
        [&]() -> Value
        {
            const Number value = ReadFormula(node, *formulas);
            if constexpr (std::is_same_v<Value, double>)
                return value.AsReal();
            else
                return value.AsInteger();
        });
}

template <class Node, class Value>
void Set(Node* node, Value value, GError** error)
{
    NodeFormulas* formulas = FormulasOf(node);
    if (formulas == nullptr)
        Original(node).set_value(node, value, error);
    else
        Guarded(0, error, [&] { return WriteConverted(*formulas, Number(value)), 0; });
}

template <bool Maximum, class Node, class Value>
Value GetLimit(Node* node, GError** error)
{
    NodeFormulas* formulas = FormulasOf(node);
    if (formulas == nullptr)
        return Maximum ? Original(node).get_max(node, error) : Original(node).get_min(node, error);
    const long double limit = ConvertedLimit(*formulas, Maximum);
    if (std::is_same_v<Value, double> || std::fabs(limit) < static_cast<long double>(INT64_MAX))
        return static_cast<Value>(limit);
    return limit < 0 ? std::numeric_limits<Value>::lowest() : std::numeric_limits<Value>::max();
}

gint64 GetIncrement(ArvGcInteger* node, GError** error)
{
    return FormulasOf(node) == nullptr ? Original(node).get_inc(node, error) : 1;
}

template <class Interface>
void Install(gpointer interface, bool converts)
{
    if (interface == nullptr)
        return;
    Interface& functions = *static_cast<Interface*>(interface);
    Originals<Interface>()[interface] = functions;
    functions.get_value = Get;
    if (!converts)
        return;
    functions.set_value = Set;
    functions.get_min = GetLimit<false>;
    functions.get_max = GetLimit<true>;
    if constexpr (std::is_same_v<Interface, ArvGcIntegerInterface>)
        functions.get_inc = GetIncrement;
}

void InstallAll()
{
    for (const GType type : {ARV_TYPE_GC_SWISS_KNIFE_NODE, ARV_TYPE_GC_INT_SWISS_KNIFE_NODE, ARV_TYPE_GC_CONVERTER_NODE,
             ARV_TYPE_GC_INT_CONVERTER_NODE})
    {
        const bool converts = g_type_is_a(type, ARV_TYPE_GC_CONVERTER) != FALSE;
        gpointer nodeClass = g_type_class_ref(type); // Never released.
        Install<ArvGcIntegerInterface>(g_type_interface_peek(nodeClass, ARV_TYPE_GC_INTEGER), converts);
        Install<ArvGcFloatInterface>(g_type_interface_peek(nodeClass, ARV_TYPE_GC_FLOAT), converts);
    }
}

} // namespace

std::mutex& ParserLock()
{
    static std::mutex mutex;
    return mutex;
}

ObjectPtr<ArvGc> NewNodeMap(ArvDevice* device, const SafeDescription& description)
{
    static std::once_flag installed;
    std::call_once(installed, InstallAll);
    const std::lock_guard<std::mutex> lock(ParserLock());
    ObjectPtr<ArvGc> nodeMap(arv_gc_new(device, description.xml.data(), description.xml.size()));
    if (nodeMap)
        g_object_set_data(G_OBJECT(nodeMap.get()), DescriptionKey, const_cast<SafeDescription*>(&description));
    return nodeMap;
}

const SafeDescription& DescriptionOf(ArvGcNode* node)
{
    static const SafeDescription none = SafeDescription();
    const gpointer known = g_object_get_data(G_OBJECT(arv_gc_node_get_genicam(node)), DescriptionKey);
    return known == nullptr ? none : *static_cast<const SafeDescription*>(known);
}

} // namespace OPX::KltAPI
