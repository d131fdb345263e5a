#include "adapters/sqlite/ConnectionOptions.h"
#include "host/account/sampleData.h"
#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/cli/outputFile.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace z7::cashflow::host {

namespace {

/// z7cf sample-xml: writes the XML documents of the sample company.
class SampleXmlCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("sample-xml", hostText(language, HostText::helpSampleXml));
        command->add_option("FOLDER", folder_, hostText(language, HostText::helpFolder))->required();
        command->footer(hostText(language, HostText::examplesSampleXml));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const std::filesystem::path folder = sqlite::pathOf(folder_);
        std::error_code failure;
        std::filesystem::create_directories(folder, failure);
        if (failure) {
            throw Failure(exit_code::database, HostText::moveFailed, {folder_, failure.message()});
        }
        for (const SampleFile& file : sampleDocuments()) { // if one of them exists, none is written
            requireNewFile(folder / (std::string(file.name) + ".xml"));
        }
        for (const SampleFile& file : sampleDocuments()) {
            const std::filesystem::path path = folder / (std::string(file.name) + ".xml");
            writeNewFile(path, file.text);
            if (output.json()) {
                output.raw(jsonLine({{"file", sqlite::utf8Of(path)}}));
            } else {
                output.line(output.text(HostText::fileWritten, {sqlite::utf8Of(path)}));
            }
        }
        output.flush();
        return exit_code::done;
    }

private:
    std::string folder_;
};

} // namespace

std::unique_ptr<Command> makeSampleXmlCommand() { return std::make_unique<SampleXmlCommand>(); }

} // namespace z7::cashflow::host
