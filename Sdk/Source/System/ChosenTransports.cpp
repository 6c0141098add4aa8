#include "System/ChosenTransports.h"

#include "Base/Report.h"
#include "Document/Texts.h"
#include "Transport/AravisTransport.h"
#include "Transport/SimulatedTransport.h"

#include <cstdlib>
#include <set>
#include <sstream>

namespace OPX::KltAPI
{
namespace
{

const char Variable[] = "KOLTA_TRANSPORTS";

std::set<std::string> ChosenWords()
{
    std::set<std::string> all = {"simulated", "gige", "usb3"};
    const char* chosen = std::getenv(Variable);
    if (chosen == nullptr || *chosen == '\0')
        return all;
    std::set<std::string> words;
    std::istringstream stream(chosen);
    for (std::string word; std::getline(stream, word, ',');)
    {
        word = Trimmed(word);
        if (all.count(word) != 0)
            words.insert(word);
        else
            Report(std::string(Variable) + " names '" + word + "', which is not one of simulated, gige, usb3.");
    }
    return words;
}

} // namespace

Transports ChosenTransports()
{
    const std::set<std::string> words = ChosenWords();
    Transports transports;
    if (words.count("simulated") != 0)
        transports.push_back(std::make_unique<SimulatedTransport>());
    if (words.count("gige") != 0 || words.count("usb3") != 0)
        transports.push_back(std::make_unique<AravisTransport>(words.count("gige") != 0, words.count("usb3") != 0));
    return transports;
}

} // namespace OPX::KltAPI
