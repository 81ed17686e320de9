// Validates the bill of materials on standard input as CycloneDX with SPDX licences. Prints "valid" or the error.

const { Validation } = require("@cyclonedx/cyclonedx-library")
const parseLicence = require("spdx-expression-parse")

async function validate(text) {
    const errors = await new Validation.JsonStrictValidator("1.6").validate(text)

    if (errors)
        throw new Error(JSON.stringify(errors, null, 2))

    for (const component of JSON.parse(text).components)
        for (const licence of component.licenses)
            parseLicence(licence.expression)
}

validate(require("fs").readFileSync(0, "utf8")).then(() => console.log("valid"), error => console.log(error.message))
