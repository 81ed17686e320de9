# Installs the files that scripts/package packs: the program and two text files with Windows line ends.

configure_file (docs/guide.md guide.txt @ONLY NEWLINE_STYLE WIN32)
configure_file (docs/third-party-notices.txt third-party-notices.txt @ONLY NEWLINE_STYLE WIN32)

install (TARGETS OrvexCleaner DESTINATION .)
install (FILES "${CMAKE_CURRENT_BINARY_DIR}/guide.txt" "${CMAKE_CURRENT_BINARY_DIR}/third-party-notices.txt" DESTINATION .)
