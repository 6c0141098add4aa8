#include "Transport.h"

#include "AravisTransport.h"
#include "SimulatedTransport.h"
#include "Texts.h"

#include <cstdio>
#include <cstdlib>
#include <set>
#include <sstream>

namespace OPX
{
namespace KltAPI
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
        word.erase(0, word.find_first_not_of(' '));
        word.erase(word.find_last_not_of(' ') + 1);
        if (all.count(word) != 0)
            words.insert(word);
        else
            Report(std::string(Variable) + " names '" + word + "', which is none of simulated, gige, usb3.");
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

void Report(const std::string& message)
{
    // Names come from files and cameras. In one call, so that the lines of several threads do not mix.
    std::fprintf(stderr, "KoltaCPP: %.1000s\n", WithoutControls(message).c_str());
}

} // namespace KltAPI
} // namespace OPX
