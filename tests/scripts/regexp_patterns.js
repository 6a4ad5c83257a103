// Real-world patterns: validation, CSV splitting and replacement with captures.
var mail = new RegExp("^[\\w.+-]+@[\\w-]+(\\.[\\w-]+)+$");
var addresses = new Array("john.doe@example.org", "a+b@mail.example.co", "no-at-sign.org", "x@localhost", "@example.org", "two@@example.org");
for (var i = 0; i < addresses.length; i++) print(addresses[i] + " " + mail.test(addresses[i]));

// A CSV field is quoted (with "" for a quote) or runs to the next comma.
function splitCsv(line) {
    var field = new RegExp("\"((?:[^\"]|\"\")*)\"|([^,]*)", "g");
    var fields = new Array();
    var at = 0;
    while (at <= line.length) {
        field.lastIndex = at;
        var m = field.exec(line);
        if (m[1] != void 0) fields[fields.length] = "<" + m[1].replace(new RegExp("\"\"", "g"), "\"") + ">";
        else fields[fields.length] = "<" + m[2] + ">";
        at = field.lastIndex + 1;
    }
    return fields.join("");
}
print(splitCsv("plain,\"quoted, with comma\",,\"say \"\"hi\"\"\",last"));
print(splitCsv(""));

// Dates reordered through captures; a function replacement sees match, captures, offset, text.
var iso = new RegExp("(\\d{4})-(\\d\\d)-(\\d\\d)", "g");
print("from 2024-02-29 to 2025-03-01.".replace(iso, "$3/$2/$1"));
function shout(match, word, offset, whole) { return word.toUpperCase() + "@" + offset + "/" + whole.length; }
print("one two".replace(new RegExp("(\\w+)", "g"), shout));
function kinds(match, capture, offset, whole) { return typeof capture + offset + whole; }
print("a1b".replace(new RegExp("(x)?\\d"), "[$1]") + " " + "a1b".replace(new RegExp("(x)?\\d"), kinds));

// Replacement text: $$, $&, $`, $', one and two digit captures, and what stands as it is.
var abc = new RegExp("(b)");
print("abc".replace(abc, "[$$|$&|$`|$'|$1|$01|$10|$2|$0|$]"));
var eleven = new RegExp("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)");
print("abcdefghijk".replace(eleven, "$11-$10-$1$2"));

// Global replacement with empty matches steps over each unit.
print("abc".replace(new RegExp("x*", "g"), "-"));
print("aaa".replace(new RegExp("a", "g"), "$&$&") + " " + "aaa".replace(new RegExp("a"), "b"));

// Pathological pattern on a longer text ends.
var many = "";
for (var n = 0; n < 2000; n++) many = many + "a";
print(new RegExp("(a*)*b").test(many + "b") + " " + new RegExp("^(a|aa)*c").test(many.substring(0, 22)));

// A replacement function may use the same pattern while the replacement steps on.
var word = new RegExp("\\w+", "g");
function inner(match) { return match.replace(word, "<$&>") + "x y".match(word).length; }
print("ab cd".replace(word, inner) + " " + word.lastIndex);
