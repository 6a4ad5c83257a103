// The arguments object: slots tied to the parameters, further arguments by value.
function tied(a, b) {
    print(arguments.length);
    print(arguments[0] + " " + arguments[1] + " " + arguments[2]);
    a = "A";
    print(arguments[0]);
    arguments[1] = "B";
    print(b);
    delete arguments[0];
    print(typeof arguments[0]);
    a = "after delete";
    print(typeof arguments[0]);
    arguments[0] = "revived";
    print(a);
    print(arguments.callee == tied);
    return arguments;
}
var kept = tied(1, 2, 3);
print(kept[0] + " " + kept[1] + " " + kept[2]);
print(kept.length);

function fewer(a, b, c) {
    print(arguments.length);
    print(typeof arguments[2]);
    arguments[2] = "unlinked";
    print(typeof c);
}
fewer(1);

function shadowed(arguments) { return arguments; }
print(shadowed("a parameter"));

function declared() {
    var arguments;
    return typeof arguments;
}
print(declared());

function notEnumerated() {
    var names = "";
    for (var k in arguments) names = names + k;
    return names;
}
print("[" + notEnumerated(1, 2) + "]");

function deleteArguments() { return delete arguments; }
print(deleteArguments());
function farIndex() { return arguments["01"]; }
print(farIndex(5, 6));
