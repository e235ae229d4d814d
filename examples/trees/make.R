# SPDX-License-Identifier: Apache-2.0
#
# Fits the models in this folder and writes them as PMML 4.4. README.md says what they are.
#
# Debian packages: r-base-core r-cran-rpart r-cran-randomforest r-cran-gbm
# Run in this folder: Rscript make.R
suppressMessages({
  library(rpart)
  library(randomForest)
  library(gbm)
})

# ---- writing PMML -----------------------------------------------------------------------------

escape <- function(x) {
  x <- gsub("&", "&amp;", x, fixed = TRUE)
  x <- gsub("<", "&lt;", x, fixed = TRUE)
  gsub("\"", "&quot;", x, fixed = TRUE)
}

number <- function(x) format(round(x, 10), digits = 10, trim = TRUE, scientific = FALSE)

# list(name = value) as attributes; NULL leaves one out
attributes_of <- function(...) {
  values <- list(...)
  values <- values[!vapply(values, is.null, logical(1))]
  if (length(values) == 0) return("")
  paste0(" ", names(values), "=\"", escape(vapply(values, as.character, "")), "\"", collapse = "")
}

tag <- function(.element, ..., content = NULL) {
  open <- paste0("<", .element, attributes_of(...))
  if (is.null(content)) return(paste0(open, "/>"))
  c(paste0(open, ">"), paste0("  ", unlist(content)), paste0("</", .element, ">"))
}

true <- tag("True")

compare <- function(field, operator, value) {
  tag("SimplePredicate", field = field, operator = operator, value = value)
}

one_of <- function(field, values) {
  if (length(values) == 1) return(compare(field, "equal", values))
  quoted <- paste0("\"", escape(gsub("\"", "\\\"", values, fixed = TRUE)), "\"", collapse = " ")
  array <- paste0("<Array n=\"", length(values), "\" type=\"string\">", quoted, "</Array>")
  tag("SimpleSetPredicate", field = field, booleanOperator = "isIn", content = list(array))
}

data_field <- function(name, column) {
  if (is.factor(column)) {
    values <- lapply(levels(column), function(level) tag("Value", value = level))
    return(tag("DataField", name = name, optype = "categorical", dataType = "string",
               content = values))
  }
  tag("DataField", name = name, optype = "continuous", dataType = "double")
}

mining_schema <- function(target, inputs) {
  fields <- lapply(inputs, function(name) tag("MiningField", name = name))
  if (!is.null(target)) {
    fields <- c(list(tag("MiningField", name = target, usageType = "target")), fields)
  }
  tag("MiningSchema", content = fields)
}

write_pmml <- function(file, description, data, target, model) {
  columns <- c(target, setdiff(names(data), target))
  fields <- lapply(columns, function(name) data_field(name, data[[name]]))
  document <- tag("PMML", xmlns = "http://www.dmg.org/PMML-4_4", version = "4.4", content = list(
    tag("Header", description = description,
        content = list(tag("Application", name = "R", version = as.character(getRversion())))),
    tag("DataDictionary", numberOfFields = length(fields), content = fields),
    model))
  writeLines(c("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", document), file, useBytes = TRUE)
}

distribution <- function(counts, levels) {
  lapply(seq_along(levels), function(i) {
    tag("ScoreDistribution", value = levels[i], recordCount = number(counts[i]))
  })
}

# ---- rpart ------------------------------------------------------------------------------------

# The predicate "the record goes left" (or right) of one row of fit$splits.
rpart_side <- function(fit, row, left) {
  split <- fit$splits[row, ]
  field <- rownames(fit$splits)[row]
  if (abs(split[["ncat"]]) == 1) {
    below <- (split[["ncat"]] < 0) == left
    return(compare(field, if (below) "lessThan" else "greaterOrEqual", number(split[["index"]])))
  }
  levels <- attr(fit, "xlevels")[[field]]
  direction <- fit$csplit[split[["index"]], seq_along(levels)]
  one_of(field, levels[direction == (if (left) 1 else 3)])
}

rpart_predicate <- function(fit, parent, left) {
  frame <- fit$frame
  row <- match(parent, rownames(frame))
  leaf <- frame$var == "<leaf>"
  before <- sum((frame$ncompete + frame$nsurrogate + !leaf)[seq_len(row - 1)])
  primary <- rpart_side(fit, before + 1, left)
  surrogates <- frame$nsurrogate[row]
  if (surrogates == 0) return(primary)
  rows <- before + 1 + frame$ncompete[row] + seq_len(surrogates)
  tag("CompoundPredicate", booleanOperator = "surrogate",
      content = c(list(primary), lapply(rows, function(r) rpart_side(fit, r, left))))
}

rpart_node <- function(fit, id, predicate) {
  frame <- fit$frame
  row <- match(id, rownames(frame))
  levels <- attr(fit, "ylevels")
  score <- if (is.null(levels)) number(frame$yval[row]) else levels[frame$yval[row]]
  content <- list(predicate)
  if (!is.null(levels)) {
    content <- c(content, distribution(frame$yval2[row, 1 + seq_along(levels)], levels))
  }
  larger <- NULL
  if (frame$var[row] != "<leaf>") {
    left <- as.character(2 * as.numeric(id))
    right <- as.character(2 * as.numeric(id) + 1)
    count <- function(child) frame$n[match(child, rownames(frame))]
    larger <- if (count(left) >= count(right)) left else right
    content <- c(content, list(
      rpart_node(fit, left, rpart_predicate(fit, id, TRUE)),
      rpart_node(fit, right, rpart_predicate(fit, id, FALSE))))
  }
  tag("Node", id = id, score = score, recordCount = number(frame$n[row]), defaultChild = larger,
      content = content)
}

rpart_model <- function(fit, name, target) {
  inputs <- setdiff(rownames(fit$splits), target)
  kind <- if (is.null(attr(fit, "ylevels"))) "regression" else "classification"
  tag("TreeModel", modelName = name, functionName = kind, algorithmName = "rpart",
      missingValueStrategy = "defaultChild", splitCharacteristic = "binarySplit",
      content = list(mining_schema(target, unique(inputs)), rpart_node(fit, "1", true)))
}

# ---- randomForest -----------------------------------------------------------------------------

forest_model <- function(fit, name, target, data) {
  xlevels <- fit$forest$xlevels
  inputs <- names(xlevels)
  response <- data[[target]]
  tree_node <- function(tree, row, predicate, inside) {
    content <- c(list(predicate), distribution(table(response[inside]), levels(response)))
    if (tree[row, "status"] == 1) {
      field <- inputs[tree[row, "split var"]]
      point <- tree[row, "split point"]
      if (is.factor(data[[field]])) {
        left <- bitwAnd(as.integer(point), 2^(seq_along(xlevels[[field]]) - 1)) > 0
        goes_left <- left[as.integer(data[[field]])]
        predicates <- list(one_of(field, xlevels[[field]][left]),
                           one_of(field, xlevels[[field]][!left]))
      } else {
        goes_left <- data[[field]] <= point
        predicates <- list(compare(field, "lessOrEqual", number(point)),
                           compare(field, "greaterThan", number(point)))
      }
      content <- c(content, list(
        tree_node(tree, tree[row, "left daughter"], predicates[[1]], inside & goes_left),
        tree_node(tree, tree[row, "right daughter"], predicates[[2]], inside & !goes_left)))
      votes <- table(response[inside])
      score <- names(votes)[which.max(votes)]
    } else {
      score <- levels(response)[tree[row, "prediction"]]
    }
    tag("Node", id = row, score = score, recordCount = sum(inside), content = content)
  }
  segments <- lapply(seq_len(fit$ntree), function(i) {
    tree <- getTree(fit, i)
    tag("Segment", id = i, content = list(true,
      tag("TreeModel", functionName = "classification", splitCharacteristic = "binarySplit",
          content = list(mining_schema(target, inputs),
                         tree_node(tree, 1, true, rep(TRUE, nrow(data)))))))
  })
  tag("MiningModel", modelName = name, functionName = "classification",
      algorithmName = "randomForest", content = list(mining_schema(target, inputs),
      tag("Segmentation", multipleModelMethod = "majorityVote", content = segments)))
}

# ---- gbm --------------------------------------------------------------------------------------

boosted_model <- function(fit, name, target, positive, negative) {
  inputs <- fit$var.names
  # gbm counts all records of a node again at its branch for missing values; these data have none.
  tree_node <- function(tree, row, predicate, missing = FALSE) {
    split <- tree$SplitVar[row]
    content <- list(predicate)
    if (split >= 0) {
      field <- inputs[split + 1]
      point <- number(tree$SplitCodePred[row])
      child <- function(column, p) {
        list(tree_node(tree, tree[[column]][row] + 1, p, column == "MissingNode"))
      }
      content <- c(content, child("LeftNode", compare(field, "lessThan", point)),
                   child("RightNode", compare(field, "greaterOrEqual", point)),
                   child("MissingNode", tag("SimplePredicate", field = field,
                                            operator = "isMissing")))
    }
    tag("Node", id = row, score = number(tree$Prediction[row]),
        recordCount = if (missing) "0" else number(tree$Weight[row]), content = content)
  }
  segments <- lapply(seq_len(fit$n.trees), function(i) {
    tree <- pretty.gbm.tree(fit, i.tree = i)
    tag("Segment", id = i, content = list(true,
      tag("TreeModel", functionName = "regression", noTrueChildStrategy = "returnLastPrediction",
          content = list(mining_schema(NULL, inputs), tree_node(tree, 1, true)))))
  })
  sum_of_trees <- tag("MiningModel", functionName = "regression", content = list(
    mining_schema(NULL, inputs),
    tag("Output", content = list(
      tag("OutputField", name = "log odds", optype = "continuous", dataType = "double"))),
    tag("Targets", content = list(tag("Target", rescaleConstant = number(fit$initF)))),
    tag("Segmentation", multipleModelMethod = "sum", content = segments)))
  link <- tag("RegressionModel", functionName = "classification", normalizationMethod = "logit",
    content = list(mining_schema(target, "log odds"),
      tag("RegressionTable", intercept = "0", targetCategory = positive, content = list(
        tag("NumericPredictor", name = "log odds", coefficient = "1"))),
      tag("RegressionTable", intercept = "0", targetCategory = negative)))
  tag("MiningModel", modelName = name, functionName = "classification", algorithmName = "gbm",
    content = list(mining_schema(target, inputs),
      tag("Segmentation", multipleModelMethod = "modelChain", content = list(
        tag("Segment", id = "trees", content = list(true, sum_of_trees)),
        tag("Segment", id = "link", content = list(true, link))))))
}

# ---- the models -------------------------------------------------------------------------------

set.seed(20)

fit <- rpart(Species ~ ., iris, maxsurrogate = 2, maxcompete = 1)
write_pmml("iris.pmml", "Species of iris flowers", iris, "Species",
           rpart_model(fit, "iris", "Species"))

air <- subset(airquality, !is.na(Ozone), select = -Day)
air$Month <- factor(month.abb[air$Month], levels = month.abb[5:9])
fit <- rpart(Ozone ~ ., air, cp = 0.012, minsplit = 14, maxsurrogate = 0)
write_pmml("airquality.pmml", "Ozone in New York, 1973, in parts per billion", air, "Ozone",
           rpart_model(fit, "airquality", "Ozone"))

passengers <- as.data.frame(Titanic)
passengers <- passengers[rep(seq_len(nrow(passengers)), passengers$Freq), 1:4]
fit <- randomForest(Survived ~ ., passengers, ntree = 9, maxnodes = 6)
write_pmml("titanic-forest.pmml", "Survival on the Titanic", passengers, "Survived",
           forest_model(fit, "titanic", "Survived", passengers))

children <- kyphosis
fit <- gbm(I(Kyphosis == "present") ~ Age + Number + Start, "bernoulli", children, n.trees = 12,
           interaction.depth = 2, n.minobsinnode = 6, shrinkage = 0.3, bag.fraction = 1)
write_pmml("kyphosis-boosted.pmml", "Kyphosis after surgery", children, "Kyphosis",
           boosted_model(fit, "kyphosis", "Kyphosis", "present", "absent"))
