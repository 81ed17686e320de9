# Runs the unit tests, but only on a machine that has nothing worth keeping: cmake -D PROGRAM=FILE -P THIS_FILE

if (NOT "$ENV{ORVEX_MAY_CLEAN_THIS_MACHINE}" STREQUAL yes)
    message ("Skipped: the unit tests delete. On a machine that is thrown away afterwards, set \
ORVEX_MAY_CLEAN_THIS_MACHINE=yes.")
    return()
endif()

execute_process (COMMAND "${PROGRAM}" --gtest_brief=1 COMMAND_ERROR_IS_FATAL ANY)
