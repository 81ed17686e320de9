"""The paths, questions and uninstallers of each product, as the tests know them."""

from collections.abc import Collection
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True, eq=False)
class Product:
    name: str
    target: str | None  # the value of --clean; None if only the sequence over all products offers it
    first_line: str
    question: str
    table: list[tuple[str, str]]  # a machine's location and a path below it, in the order of deletion
    lookups: tuple[tuple[str, str], ...] = ()  # of uninstallers: a part of the entry's name, and the name in the advice

    def paths(self, machine, missing: Collection[str] = ()) -> list[Path]:
        """The listed paths. Those below a missing location are in the root of the drive."""
        return [(machine.c if base in missing else getattr(machine, base)) / child for base, child in self.table]


ORVEX_STUDIO = Product(
    name="Orvex Studio",
    target="OrvexStudio",
    first_line="Target: Orvex Studio",
    question="Remove Orvex Studio and all of its associated files?",
    table=[
        ("program_files", "Orvex"),
        ("program_files", "OrvexStudio"),
        ("program_files", "Orvex Studio"),
        ("shared_data", "TessaraWorks/Plugins/Orvex"),
        ("shared_data", "TessaraWorks/Plugins/OrvexStudio"),
        ("user_data", "Orvex"),
        ("user_data", "OrvexMonitor"),
        ("user_data", "Orvex Monitor"),
        ("user_data", "OrvexMonitorHeadless"),
        ("user_data", "VelantoneEQ"),
        ("program_files", "Common Files/VST3/TessaraWorks"),
        ("program_files", "Common Files/VST3/Orvex.vst3"),
        ("program_files", "Common Files/VST3/OrvexAudioBus.vst3"),
        ("program_files", "Common Files/VST3/OrvexMonitor.vst3"),
        ("program_files", "Common Files/VST3/OrvexReference.vst3"),
    ],
    lookups=(("Orvex version", "Orvex"), ("Orvex Studio", "Orvex Studio")),
)

CONTENT = Product(
    name="Velantone Content",
    target="Content",
    first_line="Target: Content",
    question="Remove all Velantone content & playlist files?",
    table=[("shared_data", "TessaraWorks/Content")],
)

MEDIA_SERVER = Product(
    name="Velantone Media Server",
    target="VelantoneMediaServer",
    first_line="Target: Velantone Media Server",
    question="Remove Velantone Media Server and all of its associated files?",
    table=[
        ("shared_data", "TessaraWorks/Applications/VelantoneMediaServer"),
        ("shared_data", "TessaraWorks/Applications/VelantonePlayer"),
        ("user_data", "VelantoneMediaServer"),
        ("user_data", "VelantonePlayer"),
    ],
)

PRODUCT_MANAGER = Product(
    name="Orvex Product Manager",
    target="ProductManager",
    first_line="Target: Orvex Product Manager",
    question="Remove Orvex Product Manager and all of its associated files?",
    table=[
        ("program_files", "OrvexProductManager"),
        ("program_files", "Orvex Product Manager"),
        ("shared_data", "TessaraWorks/OrvexProductManager"),
        ("shared_data", "TessaraWorks/Orvex Product Manager"),
        ("shared_data", "TessaraWorks/Applications/OrvexProductManager"),
        ("shared_data", "TessaraWorks/Applications/Orvex Product Manager"),
        ("user_data", "OrvexProductManager"),
        ("user_data", "Orvex Product Manager"),
    ],
    lookups=(("Orvex Product Manager", "Orvex Product Manager"),),
)

COMPANY = Product(
    name="Tessara Works Global Directories",
    target=None,
    first_line="Target: All",
    question="Remove all Tessara Works global directories and files?",
    table=[
        ("shared_data", "TessaraWorks"),
        ("program_files", "Common Files/VST3/TessaraWorks"),
    ],
)

# In the order in which all products are offered.
PRODUCTS = [ORVEX_STUDIO, CONTENT, MEDIA_SERVER, PRODUCT_MANAGER, COMPANY]

# The values of --clean, in the order in which the program lists them.
TARGETS = [product.target for product in (ORVEX_STUDIO, PRODUCT_MANAGER, MEDIA_SERVER, CONTENT)] + ["All"]
