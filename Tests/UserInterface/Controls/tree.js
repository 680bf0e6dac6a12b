.pragma library

// Every item below this one, and itself.
function all(item) {
    let found = [item]
    for (let index = 0; index < item.children.length; ++index)
        found = found.concat(all(item.children[index]))
    return found
}

function find(item, condition) {
    return all(item).find(condition)
}

// The visible item that shows this text.
function textItem(item, text) {
    // Controls have a text and a font too.
    const isText = one => one.font !== undefined && one.contentItem === undefined
    return find(item, one => one.text === text && isText(one) && one.visible)
}

// The control that is named so for who cannot see it.
function named(item, name, type) {
    return find(item, one => (one.label === name || one.title === name) && String(one).startsWith(type))
}

// The knob's slider.
function knob(item) {
    return find(item, one => one.visualPosition !== undefined)
}
